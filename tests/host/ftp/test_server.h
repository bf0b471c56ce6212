#pragma once

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zel::test {

/// An FTP server: one of this folder's scripts as a process. It ends with the object, or with the test if that crashes.
class TestServer {
  public:
    /// @param arguments  the script's name, the directory to serve, options.
    explicit TestServer(std::vector<std::string> arguments) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        arguments[0] = ZELTRANS_FTP_TESTS "/" + arguments[0];
        arguments.insert(arguments.begin(), {ZELTRANS_PYTHON, "-I"});
        std::vector<char*> argv;
        for (std::string& argument : arguments) argv.push_back(argument.data());
        argv.push_back(nullptr);
        m_process = fork();
        if (m_process == 0) {
            prctl(PR_SET_PDEATHSIG, SIGKILL);
            dup2(ends[1], STDOUT_FILENO);
            execv(argv[0], argv.data());
            _exit(127);
        }
        close(ends[1]);
        std::FILE* const out = fdopen(ends[0], "r");
        if (std::fscanf(out, "%d", &m_port) != 1) m_port = 0;
        std::fclose(out);
        if (m_port == 0) throw std::runtime_error("the server didn't start");
    }
    ~TestServer() {
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    unsigned short Port() const { return static_cast<unsigned short>(m_port); }
    std::string Url(const std::string& path) const { return "ftp://127.0.0.1:" + std::to_string(m_port) + "/" + path; }

  private:
    pid_t m_process = -1;
    int m_port = 0;
};

}  // namespace zel::test
