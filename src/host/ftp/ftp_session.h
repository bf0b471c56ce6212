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

enum class Tls {
    kOff,
    /// Encrypted if the server supports it; the certificate is not checked.
    kTry,
    /// Encrypted, with a certificate that is valid for the host name; otherwise the connection fails.
    kRequire,
};

struct ServerOptions {
    std::string host;
    /// 0: the default port.
    unsigned short port = 0;
    /// Empty: anonymous.
    std::string user;
    Secret password;
    bool passive = true;
    Tls tls = Tls::kTry;
    /// Implicit TLS (ftps), from the first byte on; the certificate is checked as for kRequire.
    bool tls_from_start = false;
    /// File of the certificates that kRequire trusts; empty: the system's.
    std::string certificates;
    /// For connecting, and in active mode for the server's data connection.
    int connect_seconds = 15;
    /// Without a reply, or at less than kMinBytesPerSecond. A request without any data, whatever lines the server
    /// sends, ends after connect_seconds and twice this time.
    int stall_seconds = 30;
};
inline constexpr int kMinBytesPerSecond = 10;

enum class FtpError {
    kNone,
    /// By the Cancelled callback.
    kCancelled,
    /// By the Receiver.
    kStopped,
    /// A name or a setting that cannot be sent.
    kBadOption,
    /// User name or password refused.
    kLogin,
    /// No encryption, or an invalid certificate.
    kTls,
    kNoDirectory,
    /// No such file, no access, or an unknown command.
    kRefused,
    /// The server sends files only from the start.
    kCannotResume,
    /// Unknown host, or nothing listens there.
    kUnreachable,
    /// The connection broke, or less data came than announced.
    kConnectionLost,
    kStalled,
    kOther,
};

/// Whether a retry may succeed.
constexpr bool IsTemporary(FtpError error) noexcept {
    return error == FtpError::kConnectionLost || error == FtpError::kStalled;
}

struct FtpResult {
    FtpError error = FtpError::kNone;
    /// To print after a name and a colon. The only part that comes from the server is a reply number.
    std::string reason;

    bool Done() const noexcept { return error == FtpError::kNone; }
};

/// What a server reports about a file.
struct FileFacts {
    /// In bytes.
    std::optional<std::uint64_t> size;
    /// Digits of a UTC time; empty if unknown.
    std::string modified;

    bool operator==(const FileFacts&) const = default;
};

/// The commands that list a directory. Not every server supports each of them or lists names with a leading dot in
/// each.
enum class ListCommand { kMlsd, kListAll, kList, kNlst };

/// One connection to an FTP server. An interface, because the library that implements it is loaded on first use. Paths
/// are the server's, with slashes; a path without a leading slash is relative to the login directory.
class FtpSession {
  public:
    /// Receives data as it arrives; returning false stops the transfer.
    using Receiver = std::function<bool(std::span<const std::uint8_t>)>;
    /// Polled during every request, between once and several times a second; returning true cancels the request.
    using Cancelled = std::function<bool()>;

    virtual ~FtpSession() = default;

    virtual FtpResult List(const std::string& directory, ListCommand command, const Receiver& receiver) = 0;
    virtual FtpResult GetFacts(const std::string& directory, const std::string& name, FileFacts& facts) = 0;
    /// @param offset  of the first byte to send.
    virtual FtpResult Fetch(const std::string& directory, const std::string& name, std::uint64_t offset,
                            const Receiver& receiver) = 0;

    /// The login directory; empty before the first request and if the server does not report it.
    virtual std::string LoginDirectory() const = 0;
};

/// Makes a session, which connects on its first request. The first call loads the library, which stays loaded.
/// @param why  receives the reason when null is returned: this build or this machine has no FTP.
std::unique_ptr<FtpSession> MakeFtpSession(ServerOptions options, FtpSession::Cancelled cancelled, std::string& why);

/// The version of libcurl, such as "7.88.1"; empty without FTP. Loads the library as MakeFtpSession does.
std::string CurlVersion();

/// The entry points of the library that MakeFtpSession loads. The caller owns the session.
inline constexpr char kMakeCurlSession[] = "ZelTransMakeCurlSession";
using MakeCurlSession = FtpSession* (*)(ServerOptions&&, FtpSession::Cancelled&&);
inline constexpr char kGetCurlVersion[] = "ZelTransCurlVersion";
using GetCurlVersion = const char* (*)();

}  // namespace zel::ftp
