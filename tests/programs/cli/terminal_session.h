#pragma once

#include <cerrno>
#include <chrono>
#include <stdexcept>
#include <string>

#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

/// A line of shell that runs in a CommandDisk on a pseudo-terminal, with a test as the user.
class TerminalSession {
  public:
    TerminalSession(const CommandDisk& disk, const std::string& line) {
        const std::string script = disk.Script(line);
        m_process = forkpty(&m_terminal, nullptr, nullptr, nullptr);
        if (m_process < 0) throw std::runtime_error("no pseudo-terminal");
        if (m_process == 0) {
            execl("/bin/sh", "sh", "-c", script.c_str(), nullptr);
            _exit(127);
        }
    }
    ~TerminalSession() {
        if (m_process > 0) {
            kill(m_process, SIGKILL);
            waitpid(m_process, nullptr, 0);
        }
        close(m_terminal);
    }
    TerminalSession(const TerminalSession&) = delete;
    TerminalSession& operator=(const TerminalSession&) = delete;

    /// Waits until the program reads without echo. What is typed earlier would be discarded.
    /// @return false if that does not happen.
    bool WaitForHiddenInput() {
        for (int tries = 0; tries < kMaxSeconds * 100; ++tries) {
            termios mode{};
            if (tcgetattr(m_terminal, &mode) == 0 && (mode.c_lflag & ECHO) == 0) return true;
            if (!Read(10)) return false;
        }
        return false;
    }

    /// Waits until a text is shown.
    /// @return false if that does not happen.
    bool WaitFor(const std::string& text) {
        for (int tries = 0; tries < kMaxSeconds * 100; ++tries) {
            if (m_output.find(text) != std::string::npos) return true;
            if (!Read(10)) return false;
        }
        return false;
    }

    void Type(std::string_view text) {
        if (write(m_terminal, text.data(), text.size()) < 0) throw std::runtime_error("the terminal is closed");
    }

    /// Reads the rest of the output and waits for the end.
    /// @return the exit code; -1 if the line was killed because it did not end.
    int Wait() {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(kMaxSeconds);
        while (Read(100)) {
            if (std::chrono::steady_clock::now() > deadline) kill(m_process, SIGKILL);
        }
        int status = 0;
        waitpid(m_process, &status, 0);
        m_process = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// Everything that was shown so far, with "\r\n" for each line end.
    const std::string& Output() const { return m_output; }

  private:
    static constexpr int kMaxSeconds = 60;

    // Reads what there is within some milliseconds; false at the end.
    bool Read(int milliseconds) {
        pollfd ready{m_terminal, POLLIN, 0};
        if (poll(&ready, 1, milliseconds) <= 0) return true;
        char bytes[4096];
        const ssize_t count = read(m_terminal, bytes, sizeof bytes);
        if (count <= 0) return count < 0 && errno == EINTR;  // EIO: no program has the terminal open any more
        m_output.append(bytes, static_cast<std::size_t>(count));
        return true;
    }

    int m_terminal = -1;
    pid_t m_process = -1;
    std::string m_output;
};

}  // namespace zel::test
