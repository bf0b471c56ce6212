#include "base/child_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zel::base {

namespace {

void Check(int error) {
    if (error != 0) throw std::system_error(error, std::generic_category());
}

void CheckCall(int result) {
    if (result == -1) Check(errno);
}

/// What the child does before it runs the program.
class SpawnActions {
  public:
    SpawnActions() {
        Check(::posix_spawn_file_actions_init(&m_actions));
        if (const int error = ::posix_spawnattr_init(&m_attributes)) {
            ::posix_spawn_file_actions_destroy(&m_actions);
            Check(error);
        }
    }
    ~SpawnActions() {
        ::posix_spawn_file_actions_destroy(&m_actions);
        ::posix_spawnattr_destroy(&m_attributes);
    }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;

    void Descriptor(int from, int to) { Check(::posix_spawn_file_actions_adddup2(&m_actions, from, to)); }
    void OpenForWriting(int descriptor, const char* file) {
        Check(::posix_spawn_file_actions_addopen(&m_actions, descriptor, file, O_WRONLY, 0));
    }
    /// A process group of its own, and signals as a program expects them.
    void Separate() {
        sigset_t none, standard;
        sigemptyset(&none);
        sigfillset(&standard);
        Check(::posix_spawnattr_setpgroup(&m_attributes, 0));
        Check(::posix_spawnattr_setsigmask(&m_attributes, &none));
        Check(::posix_spawnattr_setsigdefault(&m_attributes, &standard));
        Check(::posix_spawnattr_setflags(&m_attributes,
                                         POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
    }
    pid_t Run(const char* program, char* const* arguments) const {
        pid_t process = -1;
        Check(::posix_spawn(&process, program, &m_actions, &m_attributes, arguments, environ));
        return process;
    }

  private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

}  // namespace

ChildProcess::ChildProcess(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                           int output) {
    // A socket, since a write to a pipe that nobody reads would raise a signal.
    std::array<int, 2> input{}, errors{};
    CheckCall(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, input.data()));
    m_input = FileDescriptor(input[0]);
    const FileDescriptor its_input(input[1]);
    CheckCall(::pipe2(errors.data(), O_CLOEXEC));
    m_errors = FileDescriptor(errors[0]);
    const FileDescriptor its_errors(errors[1]);
    CheckCall(::fcntl(m_errors.Get(), F_SETFL, O_NONBLOCK));
    ::shutdown(m_input.Get(), SHUT_RD);

    SpawnActions actions;
    actions.Descriptor(its_input.Get(), STDIN_FILENO);
    actions.OpenForWriting(STDOUT_FILENO, "/dev/null");
    actions.Descriptor(its_errors.Get(), STDERR_FILENO);
    actions.Descriptor(output, kOutput);
    actions.Separate();
    std::vector<std::string> words = {program.string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    m_process = actions.Run(program.c_str(), pointers.data());
}

ChildProcess::~ChildProcess() {
    if (m_status) return;
    ::kill(m_process, SIGKILL);
    HasEnded(true);
}

bool ChildProcess::HasEnded(bool wait) noexcept {
    if (m_status) return true;
    int status = 0;
    const pid_t ended = RetryInterrupted([&] { return ::waitpid(m_process, &status, wait ? 0 : WNOHANG); });
    // Without the child, as where SIGCHLD is ignored, nothing is known of its end.
    if (ended == -1) status = -1;
    if (ended != 0) m_status = status;
    return m_status.has_value();
}

/// Keeps the end of what is there. @return false at the end.
bool ChildProcess::ReadWords() {
    std::array<char, kLongestWords> piece;
    for (;;) {
        const ssize_t size = RetryInterrupted([&] { return ::read(m_errors.Get(), piece.data(), piece.size()); });
        if (size == -1) return errno == EAGAIN;
        if (size == 0) return false;
        m_words.append(piece.data(), static_cast<std::size_t>(size));
        if (m_words.size() > kLongestWords) m_words.erase(0, m_words.size() - kLongestWords);
    }
}

bool ChildProcess::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        // Its words are read meanwhile, since it waits when nobody reads them.
        pollfd ready[] = {{m_input.Get(), POLLOUT, 0}, {m_errors.Get(), POLLIN, 0}};
        CheckCall(RetryInterrupted([&] { return ::poll(ready, 2, -1); }));
        if (ready[1].revents != 0 && !ReadWords()) m_errors = FileDescriptor();
        if (ready[0].revents == 0) continue;
        const ssize_t size = RetryInterrupted(
            [&] { return ::send(m_input.Get(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT); });
        if (size == -1 && (errno == EPIPE || errno == ECONNRESET)) return false;
        if (size == -1 && errno != EAGAIN) Check(errno);
        if (size > 0) bytes.remove_prefix(static_cast<std::size_t>(size));
    }
    return true;
}

ChildProcess::End ChildProcess::Finish() {
    m_input = FileDescriptor();
    constexpr int kPause = 50;  // milliseconds
    // A program that it has started may hold the pipe open beyond its end.
    for (bool is_open = m_errors.IsOpen(); is_open && !HasEnded(false);) {
        pollfd ready = {m_errors.Get(), POLLIN, 0};
        if (::poll(&ready, 1, kPause) > 0) is_open = ReadWords();
    }
    HasEnded(true);
    if (m_errors.IsOpen()) ReadWords();
    return {*m_status, std::move(m_words)};
}

std::string ChildProcess::End::Text() const {
    if (WIFEXITED(status)) return "exit code " + std::to_string(WEXITSTATUS(status));
    return WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status)) : "unknown end";
}

std::filesystem::path FindProgram(std::string_view name) {
    const char* const path = std::getenv("PATH");
    std::string_view rest = path == nullptr ? "" : path;
    while (!rest.empty()) {
        const std::size_t colon = std::min(rest.find(':'), rest.size());
        const std::filesystem::path directory(rest.substr(0, colon));
        rest.remove_prefix(std::min(colon + 1, rest.size()));
        const std::filesystem::path program = directory / name;
        std::error_code error;
        if (directory.is_absolute() && std::filesystem::is_regular_file(program, error) &&
            ::access(program.c_str(), X_OK) == 0) {
            return program;
        }
    }
    return {};
}

}  // namespace zel::base
