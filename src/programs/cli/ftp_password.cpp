#include "programs/cli/ftp_password.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

#include "base/file_descriptor.h"
#include "host/ftp/netrc.h"
#include "programs/cli/command.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/password_prompt.h"

namespace zel::cli {

namespace {

constexpr std::size_t kMaxNetrcSize = 1U << 20;

// The text of a netrc file; nothing if it is missing or not a regular file.
std::optional<std::string> ReadNetrc(const std::string& path) {
    const base::FileDescriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (!file.IsOpen() || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw CommandError(path + ": ignored because other users can read it; run chmod 600 on it");
    }
    std::string text(std::min(static_cast<std::size_t>(status.st_size), kMaxNetrcSize), '\0');
    text.resize(base::ReadFully(file.Get(), text.data(), text.size()));
    return text;
}

// The user's own netrc file is optional: problems with it are notes.
std::optional<std::string> ReadHomeNetrc() {
    const char* const home = std::getenv("HOME");
    if (home == nullptr) return std::nullopt;
    try {
        return ReadNetrc(std::string(home) + "/.netrc");
    } catch (const CommandError& error) {
        PrintNote(error.what());
        return std::nullopt;
    }
}

std::optional<ftp::Secret> FindInNetrc(const std::string& host, const std::string& user,
                                       const std::optional<std::string>& netrc) {
    std::optional<std::string> text = netrc ? ReadNetrc(*netrc) : ReadHomeNetrc();
    if (!text && netrc) throw CommandError(*netrc + ": cannot be read");
    if (!text) return std::nullopt;
    std::optional<ftp::Secret> password = ftp::FindNetrcPassword(*text, host, user);
    ftp::Secret::Wipe(*text);
    return password;
}

}  // namespace

ftp::Secret FindFtpPassword(const std::string& host, const std::string& user, const std::optional<std::string>& netrc) {
    if (const char* const password = std::getenv("ZELTRANS_FTP_PASSWORD")) return ftp::Secret(password);
    if (std::optional<ftp::Secret> password = FindInNetrc(host, user, netrc)) return std::move(*password);
    return AskPassword(user, host);
}

}  // namespace zel::cli
