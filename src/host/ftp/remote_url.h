#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zel::ftp {

/// ftp://[USER@]HOST[:PORT]/DIRECTORY, taken apart.
struct RemoteUrl {
    bool tls_from_start = false;  ///< ftps
    std::string user;             ///< empty: not told.
    std::string host;
    unsigned short port = 0;  ///< 0: not told.
    std::string directory;    ///< unescaped; from the directory of the login, unless it begins with a slash.
};

/// @param why  receives what is wrong with the text; it holds nothing of it, since a password may be in there.
std::optional<RemoteUrl> ParseRemoteUrl(std::string_view text, std::string& why);

/// A host with perhaps a colon and a port; an IPv6 address that has one stands in brackets.
/// @return false when it can't be one.
bool ParseHostAndPort(std::string_view text, std::string& host, unsigned short& port);

}  // namespace zel::ftp
