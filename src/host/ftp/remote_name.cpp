#include "host/ftp/remote_name.h"

#include <algorithm>

#include "base/fold_case.h"

namespace zel::ftp {

namespace {

constexpr std::size_t kMaxStemSize = 8;  // digits of a long number, or characters of a name on the disk
constexpr std::size_t kMaxDirectoryNameSize = 255;
constexpr std::size_t kMaxPrintableSize = 80;

constexpr bool IsLetterOrDigit(char c) noexcept {
    return IsDigit(c) || base::IsAsciiLetter(c);
}
constexpr bool IsStemCharacter(char c) noexcept {
    return IsLetterOrDigit(c) || c == '_' || c == '-' || c == '~';
}

bool AllDigits(std::string_view text) noexcept {
    return !text.empty() && std::ranges::all_of(text, IsDigit);
}

// A name split at the dot of its extension; a leading dot belongs to the stem.
struct NameParts {
    std::string_view stem;
    std::optional<std::string_view> extension;
};
NameParts Split(std::string_view name) noexcept {
    const std::size_t dot = name.find('.', name.starts_with('.') ? 1 : 0);
    if (dot == std::string_view::npos) return {name, std::nullopt};
    return {name.substr(0, dot), name.substr(dot + 1)};
}

std::string_view WithoutDot(std::string_view name) noexcept {
    return name.starts_with('.') ? name.substr(1) : name;
}

}  // namespace

bool IsFileName(std::string_view name) noexcept {
    const auto [stem, extension] = Split(name);
    const bool numbered = AllDigits(WithoutDot(stem)) && WithoutDot(stem).size() <= kMaxStemSize;
    const bool named = !stem.empty() && stem.size() <= kMaxStemSize && stem.front() != '-' &&
                       std::ranges::all_of(stem, IsStemCharacter);
    if (!numbered && !named) return false;
    if (!extension) return true;
    if (named && extension->size() == 4 && AllDigits(*extension)) return true;
    return !extension->empty() && extension->size() <= 3 && std::ranges::all_of(*extension, IsLetterOrDigit);
}

bool IsDirectoryName(std::string_view name) noexcept {
    if (name.empty() || name.size() > kMaxDirectoryNameSize || name == "." || name == "..") return false;
    return std::ranges::all_of(name, [](char c) { return c >= ' ' && c <= '~' && c != '/' && c != '\\'; });
}

std::optional<NumberedName> NumberOf(std::string_view name) noexcept {
    const auto [stem, extension] = Split(name);
    const std::string_view digits = WithoutDot(stem);
    if (!AllDigits(digits) || digits.size() > kMaxStemSize) return std::nullopt;
    if (extension && *extension != "TN") return std::nullopt;
    unsigned long number = 0;
    for (const char c : digits) number = number * 10 + static_cast<unsigned long>(c - '0');
    return NumberedName{number, extension.has_value()};
}

std::string_view LastPart(std::string_view path) noexcept {
    while (path.ends_with('/')) path.remove_suffix(1);
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string Sibling(std::string_view path, std::string_view name) {
    while (path.ends_with('/')) path.remove_suffix(1);
    path.remove_suffix(LastPart(path).size());
    return std::string(path).append(name);
}

std::string Below(std::string_view path, std::string_view name) {
    std::string below(path);
    if (!below.empty() && below.back() != '/') below += '/';
    return below.append(name);
}

std::string Printable(std::string_view bytes) {
    std::string text(bytes.substr(0, kMaxPrintableSize));
    std::ranges::replace_if(
        text, [](char c) { return c < ' ' || c > '~'; }, '?');
    if (bytes.size() > kMaxPrintableSize) text += "...";
    return text;
}

}  // namespace zel::ftp
