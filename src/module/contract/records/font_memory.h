#pragma once

#include <cstdint>

#include "module/contract/records/char_entry.h"
#include "module/contract/records/font_header.h"
#include "module/contract/records/psos_header.h"
#include "platform/system/types.h"

struct EFFPAR;

/// A sample of a font: `height` rows of `width` bytes.
struct tag_graphic_rectangle {
    std::int16_t width = 0;
    std::int16_t height = 0;
    std::uint8_t* data = nullptr;
};

/// One font slot. A slot with a font_header holds a font. font_header, psos_header, log_font, effect_params and the two
/// spare blocks come from new, the other blocks from malloc; CZelFont::ReleaseFontData frees them all but font_copy.
struct tag_font_memory {
    tag_font_header* font_header = nullptr;
    tag_char_entry* char_directory = nullptr;  ///< kDirectoryEntries of them.
    std::uint8_t* spare_block_a = nullptr;     ///< never set by the module.
    std::uint8_t* encoding_data = nullptr;     ///< run codes, big-endian; encoding_size bytes.
    std::uint8_t* aux_block = nullptr;         ///< as in the file.
    std::uint16_t* word_table = nullptr;       ///< converted.
    std::uint8_t* char_table_a = nullptr;      ///< 384 bytes, as in the file.
    std::uint8_t* char_table_b = nullptr;      ///< 384 bytes, as in the file.
    std::uint8_t* spare_block_b = nullptr;     ///< never set by the module.
    tag_psos_header* psos_header = nullptr;
    tag_graphic_rectangle sample_a;
    tag_graphic_rectangle sample_b;
    tag_font_memory* font_copy =
        nullptr;  ///< copy of this record that shares its blocks; whoever releases the slot deletes it.
    LOGFONT* log_font = nullptr;
    EFFPAR* effect_params = nullptr;
    char file_name[MAX_PATH] = {};  ///< the file that the font came from, opened again for stored bitmap glyphs.

    /// The entry of a character; null without a directory and for a code of 192 and above, which has none.
    const tag_char_entry* Entry(std::uint32_t char_code) const noexcept {
        return char_directory != nullptr && char_code < zel::kDirectoryEntries ? &char_directory[char_code] : nullptr;
    }
};
