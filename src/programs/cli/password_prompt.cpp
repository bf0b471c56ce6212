#include "programs/cli/password_prompt.h"

#include <array>
#include <csignal>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include "base/file_descriptor.h"
#include "host/ftp/remote_name.h"
#include "programs/cli/command.h"
#include "programs/cli/diagnostics.h"

namespace zel::cli {

namespace {

constexpr char kCancelKey = 3;  // Ctrl-C

// Turns off the echo while it exists. Ctrl-C then ends the line and sends no signal, so that the terminal's mode is
// always restored.
class EchoOff {
  public:
    explicit EchoOff(int terminal) : m_terminal(terminal) {
        tcgetattr(terminal, &m_before);
        termios hidden = m_before;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO | ISIG);
        hidden.c_cc[VEOL] = kCancelKey;
        tcsetattr(terminal, TCSAFLUSH, &hidden);
    }
    ~EchoOff() { tcsetattr(m_terminal, TCSAFLUSH, &m_before); }
    EchoOff(const EchoOff&) = delete;
    EchoOff& operator=(const EchoOff&) = delete;

  private:
    int m_terminal;
    termios m_before{};
};

}  // namespace

ftp::Secret AskPassword(const std::string& user, const std::string& host) {
    const base::FileDescriptor terminal(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!terminal.IsOpen()) {
        throw CommandError("no password for " + ftp::Printable(user) +
                           ": set ZELTRANS_FTP_PASSWORD, name a netrc file, or run this on a terminal");
    }
    base::WriteFully(terminal.Get(), "Password of " + ftp::Printable(user) + " on " + host + ": ");
    std::array<char, 512> line{};
    ssize_t count = 0;
    {
        const EchoOff echo_off(terminal.Get());
        count = read(terminal.Get(), line.data(), line.size());
    }
    base::WriteFully(terminal.Get(), "\n");
    std::string password(line.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    explicit_bzero(line.data(), line.size());
    if (count > 0 && password.back() == kCancelKey) {
        PrintError("no password was entered");
        std::raise(SIGINT);
    }
    if (count <= 0 || password.back() == kCancelKey) throw CommandError("no password was entered");
    if (password.back() == '\n') password.pop_back();
    return ftp::Secret(std::move(password));
}

}  // namespace zel::cli
