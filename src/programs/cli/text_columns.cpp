#include "programs/cli/text_columns.h"

#include <algorithm>
#include <cstdint>

namespace zel::cli {

std::size_t Characters(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<std::uint8_t>(c) & 0xC0) != 0x80; }));
}

std::string Padded(std::string_view text, std::size_t width, bool right) {
    const std::string blanks(width - std::min(width, Characters(text)), ' ');
    return right ? blanks + std::string(text) : std::string(text) + blanks;
}

}  // namespace zel::cli
