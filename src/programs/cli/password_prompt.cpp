#include "programs/cli/password_prompt.h"

#include <array>
#include <string_view>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include "host/ftp/remote_name.h"
#include "programs/cli/command.h"

namespace zel::cli {

namespace {

constexpr char kCancelKey = 3;  // Ctrl-C

class Terminal {
  public:
    Terminal() : m_descriptor(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC)) {}
    ~Terminal() {
        if (IsOpen()) close(m_descriptor);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    bool IsOpen() const { return m_descriptor >= 0; }
    int Get() const { return m_descriptor; }
    void Print(std::string_view text) const {
        [[maybe_unused]] const ssize_t written = write(m_descriptor, text.data(), text.size());
    }

  private:
    int m_descriptor;
};

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
    const Terminal terminal;
    if (!terminal.IsOpen()) {
        throw CommandError("no password for " + ftp::Printable(user) +
                           ": set ZELTRANS_FTP_PASSWORD, name a netrc file, or run this on a terminal");
    }
    terminal.Print("Password of " + ftp::Printable(user) + " on " + host + ": ");
    std::array<char, 512> line{};
    ssize_t count = 0;
    {
        const EchoOff echo_off(terminal.Get());
        count = read(terminal.Get(), line.data(), line.size());
    }
    terminal.Print("\n");
    std::string password(line.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    explicit_bzero(line.data(), line.size());
    if (count <= 0 || password.back() == kCancelKey) throw CommandError("no password was entered");
    if (password.back() == '\n') password.pop_back();
    return ftp::Secret(std::move(password));
}

}  // namespace zel::cli
