#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Which names from a server are accepted. A server may send any name, so only those are accepted that a message, a
/// font or their directories can have. No accepted name leads out of the directory in which it is opened.
namespace zel::ftp {

/// Whether a message or font file can have this name. A name is a stem with an optional dot and extension. The stem is
/// up to 8 digits with an optional leading dot, or up to 8 letters, digits, '_', '-' and '~' that do not begin with
/// '-'. The extension is up to 3 letters and digits; a stem without a leading dot may have one of 4 digits. Examples:
/// ".0012", "0012", ".0012.TN", "PROMO", "NEWS.0012".
bool IsFileName(std::string_view name) noexcept;

/// Whether a directory name can be shown and opened: up to 255 printable ASCII characters without separators, and not
/// "." or "..".
bool IsDirectoryName(std::string_view name) noexcept;

/// The number in a name, as the import reads it from ".0012", "12" and ".0012.TN". Names with other extensions have
/// none.
struct NumberedName {
    unsigned long number = 0;
    /// The name ends in ".TN".
    bool tn = false;

    bool operator==(const NumberedName&) const = default;
};
std::optional<NumberedName> NumberOf(std::string_view name) noexcept;

/// An ASCII digit, whatever the locale.
constexpr bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

/// The last component of a remote path, without trailing separators; empty for the root and for an empty path.
std::string_view LastPart(std::string_view path) noexcept;
/// The path with its last component replaced.
std::string Sibling(std::string_view path, std::string_view name);
/// The path with a component appended.
std::string Below(std::string_view path, std::string_view name);

/// Text from a server, to show: '?' for whatever is not printable ASCII, shortened to 80 characters.
std::string Printable(std::string_view bytes);

}  // namespace zel::ftp
