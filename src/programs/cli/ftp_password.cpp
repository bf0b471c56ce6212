#include "programs/cli/ftp_password.h"

#include <array>
#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include "host/ftp/netrc.h"
#include "host/ftp/remote_name.h"
#include "programs/cli/arguments.h"

namespace zel::cli {

namespace {

constexpr char kCancelKey = 3;  // Ctrl-C
constexpr std::size_t kLargestNetrc = 1U << 20;

class File {
  public:
    File(const char* path, int flags) : m_descriptor(open(path, flags | O_CLOEXEC)) {}
    ~File() {
        if (m_descriptor >= 0) close(m_descriptor);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    int Get() const { return m_descriptor; }

  private:
    int m_descriptor;
};

// What is typed isn't shown for as long as this lives; Ctrl-C ends the line, so that the terminal is always set back.
class HiddenTyping {
  public:
    explicit HiddenTyping(int terminal) : m_terminal(terminal) {
        tcgetattr(terminal, &m_before);
        termios hidden = m_before;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO | ISIG);
        hidden.c_cc[VEOL] = kCancelKey;
        tcsetattr(terminal, TCSAFLUSH, &hidden);
    }
    ~HiddenTyping() { tcsetattr(m_terminal, TCSAFLUSH, &m_before); }
    HiddenTyping(const HiddenTyping&) = delete;
    HiddenTyping& operator=(const HiddenTyping&) = delete;

  private:
    int m_terminal;
    termios m_before{};
};

void Say(int terminal, std::string_view text) {
    [[maybe_unused]] const ssize_t written = write(terminal, text.data(), text.size());
}

std::string AskFor(const std::string& host, const std::string& user) {
    const File terminal("/dev/tty", O_RDWR | O_NOCTTY);
    if (terminal.Get() < 0) {
        throw CommandError("there is no password for " + ftp::Printable(user) +
                           ": set ZELTRANS_FTP_PASSWORD, name a netrc file, or run this on a terminal");
    }
    Say(terminal.Get(), "Password of " + ftp::Printable(user) + " on " + host + ": ");
    std::array<char, 512> typed{};
    ssize_t count = 0;
    {
        const HiddenTyping hidden(terminal.Get());
        count = read(terminal.Get(), typed.data(), typed.size());
    }
    Say(terminal.Get(), "\n");
    std::string password(typed.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    explicit_bzero(typed.data(), typed.size());
    if (count <= 0 || password.back() == kCancelKey) throw CommandError("no password was given");
    if (password.back() == '\n') password.pop_back();
    return password;
}

// A netrc file's text; nothing when there is no such file.
std::optional<std::string> ReadNetrc(const std::string& path) {
    const File file(path.c_str(), O_RDONLY | O_NONBLOCK);
    struct stat status {};
    if (file.Get() < 0 || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw CommandError(path + ": ignored because other users can read it; run chmod 600 on it");
    }
    std::string text(std::min(static_cast<std::size_t>(status.st_size), kLargestNetrc), '\0');
    const ssize_t count = read(file.Get(), text.data(), text.size());
    text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return text;
}

std::optional<ftp::Secret> LookIntoNetrc(const std::string& host, const std::string& user,
                                         const std::optional<std::string>& netrc) {
    const char* const home = std::getenv("HOME");
    if (!netrc && home == nullptr) return std::nullopt;
    std::optional<std::string> text;
    try {
        text = ReadNetrc(netrc ? *netrc : std::string(home) + "/.netrc");
    } catch (const CommandError& error) {
        if (netrc) throw;
        SayNote(error.what());
    }
    if (!text && netrc) throw CommandError(*netrc + ": can't be read");
    if (!text) return std::nullopt;
    std::optional<ftp::Secret> password = ftp::FindNetrcPassword(*text, host, user);
    ftp::Secret::Wipe(*text);
    return password;
}

}  // namespace

ftp::Secret FindFtpPassword(const std::string& host, const std::string& user, const std::optional<std::string>& netrc) {
    if (const char* const password = std::getenv("ZELTRANS_FTP_PASSWORD")) return ftp::Secret(password);
    if (std::optional<ftp::Secret> password = LookIntoNetrc(host, user, netrc)) return std::move(*password);
    return ftp::Secret(AskFor(host, user));
}

}  // namespace zel::cli
