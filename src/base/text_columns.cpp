#include "base/text_columns.h"

#include <algorithm>

namespace zel::base {

namespace {

constexpr bool BeginsCharacter(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

std::size_t WidthOf(std::span<const std::vector<std::string>> lines, std::size_t column) {
    std::size_t width = 0;
    for (const std::vector<std::string>& cells : lines) width = std::max(width, CharacterCount(cells[column]));
    return width;
}

}  // namespace

std::size_t CharacterCount(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::count_if(text, BeginsCharacter));
}

std::string Padded(std::string_view text, std::size_t width, Align align) {
    const std::string blanks(width - std::min(width, CharacterCount(text)), ' ');
    return align == Align::kRight ? blanks + std::string(text) : std::string(text) + blanks;
}

std::string TableText(std::span<const std::vector<std::string>> lines, std::span<const ColumnStyle> columns) {
    std::vector<std::size_t> widths;
    for (std::size_t n = 0; n < columns.size(); ++n) widths.push_back(WidthOf(lines, n));
    std::string table;
    for (const std::vector<std::string>& cells : lines) {
        std::string line;
        for (std::size_t n = 0; n < columns.size(); ++n) {
            if (widths[n] != 0 || !columns[n].drop_empty) line += "  " + Padded(cells[n], widths[n], columns[n].align);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        table += line + '\n';
    }
    return table;
}

}  // namespace zel::base
