#include "fontmap/name_lists.h"

#include <algorithm>

namespace {

constexpr bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

// What stands before an annotation: the text up to the first "=", less the character in front of it, in the format a
// blank. A text that begins with "=" keeps nothing.
std::string_view BeforeAnnotation(std::string_view text) noexcept {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) return text;
    return text.substr(0, equals == 0 ? 0 : equals - 1);
}

// An entry ends in a digit and holds a TAB; a family's name may end in a digit too.
bool IsHeading(std::string_view line) noexcept {
    return line.empty() || !IsDigit(line.back()) || line.find('\t') == std::string_view::npos;
}

std::string_view HeadingFamily(std::string_view line) noexcept {
    while (line.size() > 2 && line.back() == '\t') line.remove_suffix(1);
    return BeforeAnnotation(line);
}

// At most four characters from the first digit on, up to the first that isn't one.
std::uint16_t LeadingNumber(std::string_view text) noexcept {
    unsigned number = 0;
    for (const char c : text.substr(0, 4)) {
        if (!IsDigit(c)) break;
        number = number * 10 + static_cast<unsigned>(c - '0');
    }
    return static_cast<std::uint16_t>(number);
}

}  // namespace

std::optional<BitstreamEntry> BitstreamLineReader::Read(std::string_view line) {
    if (IsHeading(line)) {
        m_family = HeadingFamily(line);
        return std::nullopt;
    }
    const bool indented = line.front() == '\t';
    if (indented) line.remove_prefix(1);
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos) return std::nullopt;
    const std::string_view name = BeforeAnnotation(line.substr(0, tab));
    const auto number = std::find_if(line.begin() + static_cast<std::ptrdiff_t>(tab), line.end(), IsDigit);
    m_name.clear();
    if (indented) m_name.append(m_family).append(" ");
    m_name.append(name).append(" BT");
    return BitstreamEntry{LeadingNumber(line.substr(static_cast<std::size_t>(number - line.begin()))), m_name};
}

std::optional<TypefaceEntry> ReadTypefaceLine(std::string_view line) noexcept {
    const std::size_t tab = line.find('\t');
    if (tab == std::string_view::npos) return std::nullopt;
    const std::size_t name = line.find_first_not_of('\t', tab);
    if (name == std::string_view::npos) return std::nullopt;
    return TypefaceEntry{line.substr(0, tab), line.substr(name)};
}
