#include "host/ftp/remote_url.h"

#include <algorithm>
#include <charconv>

#include "base/fold_case.h"
#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

bool IsHostName(std::string_view text) {
    constexpr std::string_view kAllowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-._:%";
    return !text.empty() && text.front() != '-' && text.find_first_not_of(kAllowed) == std::string_view::npos;
}

// Percent-decodes the text. Rejects control characters: a line end would start another FTP command.
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

// Each Take function moves its part from the front of the text to the URL; on an error it sets `why` and returns false.

bool TakeScheme(std::string_view& text, RemoteUrl& url, std::string& why) {
    const std::size_t end = text.find("://");
    const std::string_view scheme = text.substr(0, end);
    url.tls_from_start = base::EqualsFolded(scheme, "ftps");
    if (end == std::string_view::npos || (!url.tls_from_start && !base::EqualsFolded(scheme, "ftp"))) {
        why = "the address must begin with ftp:// or ftps://";
        return false;
    }
    text.remove_prefix(end + 3);
    return true;
}

bool TakeUser(std::string_view& server, RemoteUrl& url, std::string& why) {
    // The last '@' ends the account, so that the end of a password with an '@' is never taken for a host and shown.
    const std::size_t at = server.rfind('@');
    if (at == std::string_view::npos) return true;
    const std::string_view account = server.substr(0, at);
    if (account.find(':') != std::string_view::npos) {
        why =
            "a password in the address is visible to every user of this machine; omit it: it is taken from "
            "ZELTRANS_FTP_PASSWORD, from a netrc file, or from a prompt";
        return false;
    }
    const std::optional<std::string> user = Unescaped(account);
    if (!user || user->empty()) {
        why = "invalid user name in the address";
        return false;
    }
    url.user = *user;
    server.remove_prefix(at + 1);
    return true;
}

bool TakeServer(std::string_view& text, RemoteUrl& url, std::string& why) {
    const std::size_t slash = std::min(text.find('/'), text.size());
    std::string_view server = text.substr(0, slash);
    text.remove_prefix(std::min(slash + 1, text.size()));
    if (!TakeUser(server, url, why)) return false;
    if (ParseHostAndPort(server, url.host, url.port)) return true;
    why = "invalid host or port in the address";
    return false;
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
    if (!TakeScheme(text, url, why) || !TakeServer(text, url, why)) return std::nullopt;
    const std::optional<std::string> directory = Unescaped(text);
    if (!directory) {
        why = "invalid directory in the address";
        return std::nullopt;
    }
    url.directory = *directory;
    return url;
}

}  // namespace zel::ftp
