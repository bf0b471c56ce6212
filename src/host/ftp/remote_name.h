#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Which names of a server are taken. A name comes from whoever answered, so only those are let through that a message,
/// a font or their directories can have; none of them can lead out of the directory that it is opened in.
namespace zel::ftp {

/// Whether a message or font file can have this name: a dot or nothing, and up to 8 digits; or a stem of up to 8
/// letters, digits, '_', '-' and '~' that begins with no '-'. Behind either may stand a dot and an extension of up to 3
/// letters and digits, behind a stem also one of 4 digits: ".0012", "0012", ".0012.TN", "PROMO", "NEWS.0012".
bool IsFileName(std::string_view name) noexcept;

/// Whether a person can be shown the name of a directory, and be led into it: up to 255 printable ASCII characters,
/// without separators, and neither "." nor "..".
bool IsDirectoryName(std::string_view name) noexcept;

/// A name's number, as the import counts: of ".0012", "12" and ".0012.TN". Other extensions leave no number.
struct NumberedName {
    unsigned long number = 0;
    bool tn = false;  ///< it ends in ".TN".
    bool operator==(const NumberedName&) const = default;
};
std::optional<NumberedName> NumberOf(std::string_view name) noexcept;

/// An ASCII digit, whatever the locale.
constexpr bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

/// Equal but for the case of ASCII letters.
bool SameName(std::string_view a, std::string_view b) noexcept;

/// Last part of a remote path, closing separators left out; empty for the root and for nothing.
std::string_view LastPart(std::string_view path) noexcept;
/// The path with its last part replaced, or with a part more.
std::string Sibling(std::string_view path, std::string_view name);
std::string Below(std::string_view path, std::string_view name);

/// Bytes from a server as text to show: what isn't printable ASCII as '?', cut at 80 characters.
std::string Shown(std::string_view bytes);

}  // namespace zel::ftp
