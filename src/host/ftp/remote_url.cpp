#include "host/ftp/remote_url.h"

#include <algorithm>
#include <charconv>

#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

bool IsHostName(std::string_view text) {
    constexpr std::string_view kAllowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._:%";
    return !text.empty() && text.front() != '-' && text.find_first_not_of(kAllowed) == std::string_view::npos;
}

// Without control characters, which would begin a command of their own.
std::optional<std::string> Unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        unsigned byte = static_cast<unsigned char>(text[at]);
        if (text[at] == '%') {
            if (text.size() - at < 3) return std::nullopt;
            const char* const digits = text.data() + at + 1;
            const auto [end, error] = std::from_chars(digits, digits + 2, byte, 16);
            if (error != std::errc() || end != digits + 2) return std::nullopt;
            at += 2;
        }
        if (byte < ' ' || byte == 127) return std::nullopt;
        plain += static_cast<char>(byte);
    }
    return plain;
}

}  // namespace

bool ParseHostAndPort(std::string_view text, std::string& host, unsigned short& port) {
    std::string_view name = text, digits;
    const std::size_t colon = text.rfind(':');
    if (text.starts_with('[')) {
        const std::size_t close = text.find(']');
        if (close == std::string_view::npos) return false;
        name = text.substr(1, close - 1);
        digits = text.substr(close + 1);
        if (!digits.empty() && digits.front() != ':') return false;
    } else if (colon != std::string_view::npos && text.find(':') == colon) {
        name = text.substr(0, colon);
        digits = text.substr(colon);
    }
    port = 0;
    if (!digits.empty()) {
        digits.remove_prefix(1);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), port);
        if (error != std::errc() || end != digits.data() + digits.size() || port == 0) return false;
    }
    host = name;
    return IsHostName(name);
}

std::optional<RemoteUrl> ParseRemoteUrl(std::string_view text, std::string& why) {
    RemoteUrl url;
    const std::size_t scheme = std::min(text.find("://"), text.size());
    url.tls_from_start = SameName(text.substr(0, scheme), "ftps");
    if (scheme == text.size() || (!url.tls_from_start && !SameName(text.substr(0, scheme), "ftp"))) {
        why = "the address begins with neither ftp:// nor ftps://";
        return std::nullopt;
    }
    text.remove_prefix(scheme + 3);
    const std::size_t slash = std::min(text.find('/'), text.size());
    std::string_view server = text.substr(0, slash);
    // The last one, so that a password with an '@' isn't taken for a host, and shown as one.
    if (const std::size_t at = server.rfind('@'); at != std::string_view::npos) {
        const std::string_view account = server.substr(0, at);
        if (account.find(':') != std::string_view::npos) {
            why =
                "a password in the address can be read by everyone on this machine; leave it out: it is taken from "
                "ZELTRANS_FTP_PASSWORD, from a netrc file, or asked for";
            return std::nullopt;
        }
        const std::optional<std::string> user = Unescaped(account);
        if (!user || user->empty()) {
            why = "the address's user can't be one";
            return std::nullopt;
        }
        url.user = *user;
        server.remove_prefix(at + 1);
    }
    if (!ParseHostAndPort(server, url.host, url.port)) {
        why = "the address's host or port can't be one";
        return std::nullopt;
    }
    const std::optional<std::string> directory = Unescaped(text.substr(std::min(slash + 1, text.size())));
    if (!directory) {
        why = "the address's directory can't be one";
        return std::nullopt;
    }
    url.directory = *directory;
    return url;
}

}  // namespace zel::ftp
