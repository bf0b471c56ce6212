// Prints the name of a font file: read_font < FILE. Links the target zelformats and nothing else.
#include <iostream>
#include <iterator>
#include <vector>

#include "module/font/format/font_loader.h"

int main() {
    const std::vector<std::uint8_t> bytes{std::istreambuf_iterator<char>(std::cin), {}};
    zel::font::LoadedFont font;
    if (LoadFont(bytes, font) == zel::font::FontOutcome::kRead) std::cout << font.slot.font_header->Name() << '\n';
}
