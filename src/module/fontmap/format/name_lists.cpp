#include "module/fontmap/format/name_lists.h"

namespace zel::fontmap {

namespace {

constexpr bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

// Position of the first `c`, or the size of the text. Fields are so short that this loop is faster than a library call.
constexpr std::size_t PositionOf(char c, std::string_view text) noexcept {
    std::size_t position = 0;
    while (position < text.size() && text[position] != c) ++position;
    return position;
}

// The text before an annotation, whose "=" is at `equals`, without the character before the "=", normally a blank.
// Empty when the text starts with "=".
constexpr std::string_view BeforeAnnotation(std::string_view text, std::size_t equals) noexcept {
    return text.substr(0, equals == 0 ? 0 : equals - 1);
}

// An entry ends with a digit and contains a TAB. The name of a family may end with a digit too.
bool IsHeading(std::string_view line) noexcept {
    return line.empty() || !IsDigit(line.back()) || PositionOf('\t', line) == line.size();
}

std::string_view HeadingFamily(std::string_view line) noexcept {
    while (line.size() > 2 && line.back() == '\t') line.remove_suffix(1);
    const std::size_t equals = PositionOf('=', line);
    return equals < line.size() ? BeforeAnnotation(line, equals) : line;
}

// The number at the start of the text; at most four digits.
std::uint16_t LeadingNumber(std::string_view text) noexcept {
    unsigned number = 0;
    for (const char c : text.substr(0, 4)) {
        if (!IsDigit(c)) break;
        number = number * 10 + static_cast<unsigned>(c - '0');
    }
    return static_cast<std::uint16_t>(number);
}

}  // namespace

bool BitstreamLineReader::Read(std::string_view line, BitstreamEntry& entry) noexcept {
    if (IsHeading(line)) {
        m_family = HeadingFamily(line);
        return false;
    }
    entry.indented = line.front() == '\t';
    if (entry.indented) line.remove_prefix(1);
    std::size_t end = 0;
    while (end < line.size() && line[end] != '\t' && line[end] != '=') ++end;
    entry.name = line.substr(0, end);
    line.remove_prefix(end);
    if (line.starts_with('=')) {
        entry.name = BeforeAnnotation(entry.name, end);
        line.remove_prefix(PositionOf('\t', line));
    }
    if (line.empty()) return false;
    entry.family = m_family;
    while (!IsDigit(line.front())) line.remove_prefix(1);  // the line ends with a digit
    entry.number = LeadingNumber(line);
    return true;
}

std::optional<TypefaceEntry> ReadTypefaceLine(std::string_view line) noexcept {
    const std::string_view typeface = line.substr(0, PositionOf('\t', line));
    line.remove_prefix(typeface.size());
    while (line.starts_with('\t')) line.remove_prefix(1);
    if (line.empty()) return std::nullopt;
    return TypefaceEntry{typeface, line};
}

}  // namespace zel::fontmap
