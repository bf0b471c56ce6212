#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "host/ftp/listing.h"
#include "host/ftp/secret.h"

namespace zel::ftp {

/// One connection to an FTP server, behind an interface, since the library that does it is loaded only when it is used.
enum class Tls {
    kOff,
    kTry,      ///< encrypted if the server can; its certificate isn't checked.
    kRequire,  ///< encrypted, with a certificate that is good for the host's name, or not at all.
};

struct ServerOptions {
    std::string host;
    unsigned short port = 0;  ///< 0: the usual one.
    std::string user;         ///< empty: anonymous.
    Secret password;
    bool passive = true;
    Tls tls = Tls::kTry;
    bool tls_from_start = false;  ///< ftps: encrypted before the first word; as kRequire.
    std::string certificates;     ///< file of those that kRequire trusts; empty: the system's.
    int connect_seconds = 15;     ///< for connecting, and for the server's connection back in active mode.
    int stall_seconds = 30;       ///< without a reply, or without kSlowestBytes a second.
};
inline constexpr int kSlowestBytes = 10;

enum class FtpError {
    kNone,
    kCancelled,  ///< by whoever asked.
    kStopped,    ///< the receiver of the bytes took no more.
    kBadOption,  ///< a name or a setting that can't be sent.
    kLogin,      ///< user or password was refused.
    kTls,        ///< no encryption, or a certificate that isn't good.
    kNoDirectory,
    kRefused,       ///< the server doesn't have it, or doesn't give it, or doesn't know the command.
    kCannotResume,  ///< the server begins at a file's start only.
    kUnreachable,   ///< no such host, or nothing answers there.
    kCut,           ///< the connection broke off, or brought less than the server had told.
    kStalled,
    kOther,
};

/// Whether it may go better when it is tried once more.
constexpr bool IsPassing(FtpError error) noexcept {
    return error == FtpError::kCut || error == FtpError::kStalled;
}

struct FtpResult {
    FtpError error = FtpError::kNone;
    std::string words;  ///< the reason, to follow a name and a colon; nothing in it comes from the server but a number.

    bool Done() const noexcept { return error == FtpError::kNone; }
};

/// What a server tells of a file.
struct FileFacts {
    std::optional<std::uint64_t> size;  ///< bytes.
    std::string modified;               ///< digits of a UTC time; empty when the server doesn't tell.
    bool operator==(const FileFacts&) const = default;
};

/// How a directory can be asked for; not every server knows each of them, nor shows names with a dot in each.
enum class ListCommand { kMlsd, kListAll, kList, kNlst };

class FtpSession {
  public:
    /// Takes the bytes as they come; false stops the transfer.
    using Receiver = std::function<bool(std::span<const std::uint8_t>)>;
    /// Asked several times a second at best, once a second at worst; true stops what is being done.
    using Cancelled = std::function<bool()>;

    virtual ~FtpSession() = default;

    /// Paths are the server's, with slashes; without one in front they begin in the directory of the login.
    virtual FtpResult List(const std::string& directory, ListCommand command, const Receiver& receiver) = 0;
    virtual FtpResult Ask(const std::string& directory, const std::string& name, FileFacts& facts) = 0;
    /// @param offset  of the first byte to send.
    virtual FtpResult Fetch(const std::string& directory, const std::string& name, std::uint64_t offset,
                            const Receiver& receiver) = 0;

    /// The directory of the login; empty before the first request, and when the server doesn't tell it.
    virtual std::string LoginDirectory() const = 0;
};

/// Makes a session, which connects with its first request. The library is loaded by the first call and stays.
/// @param why  receives the reason when there is none: this build, or this machine, has no FTP.
std::unique_ptr<FtpSession> MakeFtpSession(ServerOptions options, FtpSession::Cancelled cancelled, std::string& why);

/// The entry of the library that MakeFtpSession loads; the caller deletes the session.
inline constexpr char kMakeCurlSession[] = "ZelTransMakeCurlSession";
using MakeCurlSession = ftp::FtpSession* (*)(ftp::ServerOptions&&, ftp::FtpSession::Cancelled&&);

}  // namespace zel::ftp
