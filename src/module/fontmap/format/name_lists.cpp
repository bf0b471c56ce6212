#include "module/fontmap/format/name_lists.h"

namespace zel::fontmap {

namespace {

constexpr bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

// Where a character stands, or the text's end. Fields are short: this is sooner done than a call of the library.
constexpr std::size_t PlaceOf(char c, std::string_view text) noexcept {
    std::size_t place = 0;
    while (place < text.size() && text[place] != c) ++place;
    return place;
}

// What stands before an annotation, whose "=" is at `equals`, less the character in front of it, in the format a blank.
// A text that begins with "=" keeps nothing.
constexpr std::string_view BeforeAnnotation(std::string_view text, std::size_t equals) noexcept {
    return text.substr(0, equals == 0 ? 0 : equals - 1);
}

// An entry ends in a digit and holds a TAB; a family's name may end in a digit too.
bool IsHeading(std::string_view line) noexcept {
    return line.empty() || !IsDigit(line.back()) || PlaceOf('\t', line) == line.size();
}

std::string_view HeadingFamily(std::string_view line) noexcept {
    while (line.size() > 2 && line.back() == '\t') line.remove_suffix(1);
    const std::size_t equals = PlaceOf('=', line);
    return equals < line.size() ? BeforeAnnotation(line, equals) : line;
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
        line.remove_prefix(PlaceOf('\t', line));
    }
    if (line.empty()) return false;
    entry.family = m_family;
    while (!IsDigit(line.front())) line.remove_prefix(1);  // the line ends in one
    entry.number = LeadingNumber(line);
    return true;
}

std::optional<TypefaceEntry> ReadTypefaceLine(std::string_view line) noexcept {
    const std::string_view typeface = line.substr(0, PlaceOf('\t', line));
    line.remove_prefix(typeface.size());
    while (line.starts_with('\t')) line.remove_prefix(1);
    if (line.empty()) return std::nullopt;
    return TypefaceEntry{typeface, line};
}

}  // namespace zel::fontmap
