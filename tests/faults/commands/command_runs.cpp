#include "faults/commands/command_runs.h"

#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zel::failing {

namespace {

namespace fs = std::filesystem;

std::string BytesOf(const fs::path& file) {
    std::string bytes(static_cast<std::size_t>(fs::file_size(file)), '\0');
    std::ifstream(file, std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return bytes;
}

void SendOutputTo(const fs::path& file, int descriptor) {
    ::dup2(::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666), descriptor);
}

[[noreturn]] void Execute(const fs::path& directory, const std::vector<std::string>& arguments, int socket) {
    ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
    SendOutputTo(directory / "run.out", STDOUT_FILENO);
    SendOutputTo(directory / "run.err", STDERR_FILENO);
    if (::chdir(directory.c_str()) != 0) ::_exit(127);
    ::setenv("XDG_CONFIG_HOME", (directory / "run.settings").c_str(), 1);
    ::setenv("LD_PRELOAD", ZELTRANS_FAILING_CALLS, 1);
    ::setenv(kLibraryVariable, ZELTRANS_COMMANDS, 1);
    ::setenv(kSocketVariable, std::to_string(socket).c_str(), 1);
    std::vector<char*> argv{const_cast<char*>(ZELTRANS_COMMAND)};
    for (const std::string& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    ::execv(ZELTRANS_COMMAND, argv.data());
    ::_exit(127);
}

}  // namespace

CommandRuns::CommandRuns(const fs::path& directory, const std::vector<std::string>& arguments) {
    int pair[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, pair) != 0) throw std::runtime_error("no socket");
    m_socket = base::FileDescriptor(pair[0]);
    const base::FileDescriptor other(pair[1]);
    m_process = ::fork();
    if (m_process != 0) return;
    ::close(pair[0]);
    Execute(directory, arguments, pair[1]);
}

CommandRuns::~CommandRuns() {
    m_socket = base::FileDescriptor();
    ::waitpid(m_process, nullptr, 0);
}

Reply CommandRuns::Run(const Request& request) {
    Reply reply{};
    if (!base::WriteFully(m_socket.Get(), {reinterpret_cast<const char*>(&request), sizeof request}) ||
        base::ReadFully(m_socket.Get(), &reply, sizeof reply) != sizeof reply)
        throw std::runtime_error("the command can't be started");
    return reply;
}

Tree ReadTree(const fs::path& directory) {
    Tree tree;
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        const std::string name = entry.path().lexically_relative(directory).string();
        if (name == "run.out" || name == "run.err") continue;
        if (entry.is_directory()) {
            tree[name + '/'];
        } else {
            tree[name] = BytesOf(entry.path());
        }
    }
    return tree;
}

void Restore(const fs::path& directory, const Tree& tree) {
    const Tree now = ReadTree(directory);
    for (auto left = now.rbegin(); left != now.rend(); ++left) {
        if (!tree.contains(left->first)) fs::remove(directory / left->first);
    }
    for (const auto& [name, bytes] : tree) {
        if (name.ends_with('/')) {
            fs::create_directory(directory / name);
        } else if (const auto found = now.find(name); found == now.end() || found->second != bytes) {
            std::ofstream(directory / name, std::ios::binary) << bytes;
        }
    }
}

}  // namespace zel::failing
