#include "module/font/format/convert_char_entry.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "module/message/format/byte_order.h"

namespace zel::font {

tag_char_entry ConvertCharEntry(std::span<const std::uint8_t> bytes) noexcept {
    std::array<std::uint8_t, sizeof(tag_char_entry)> whole{};
    std::copy_n(bytes.begin(), std::min(bytes.size(), whole.size()), whole.begin());
    tag_char_entry entry{};
    ConvertCharEntries(whole, &entry);
    return entry;
}

void ConvertCharEntries(std::span<const std::uint8_t> bytes, tag_char_entry* entries) noexcept {
    for (; bytes.size() >= sizeof *entries; bytes = bytes.subspan(sizeof *entries), ++entries) {
        tag_char_entry file;
        std::memcpy(&file, bytes.data(), sizeof file);
        entries->glyph_kind = file.glyph_kind;
        entries->unread_1 = file.unread_1;
        entries->glyph_word = RepackGlyphWord(message::SwapLong(file.glyph_word));
        entries->glyph_offset = message::SwapLong(file.glyph_offset);
    }
}

}  // namespace zel::font
