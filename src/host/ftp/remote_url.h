#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zel::ftp {

/// The parts of ftp://[USER@]HOST[:PORT]/DIRECTORY.
struct RemoteUrl {
    /// The scheme is ftps.
    bool tls_from_start = false;
    /// Empty if not given.
    std::string user;
    std::string host;
    /// 0 if not given.
    unsigned short port = 0;
    /// Unescaped; relative to the login directory unless it begins with a slash.
    std::string directory;
};

/// @param why  receives the error. It quotes nothing of the text, which may contain a password.
std::optional<RemoteUrl> ParseRemoteUrl(std::string_view text, std::string& why);

/// Parses HOST[:PORT]; an IPv6 address with a port is in brackets.
/// @return false when the text is invalid.
bool ParseHostAndPort(std::string_view text, std::string& host, unsigned short& port);

}  // namespace zel::ftp
