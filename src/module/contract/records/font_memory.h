#pragma once

#include <cstdint>

#include "module/contract/records/char_entry.h"
#include "module/contract/records/font_header.h"
#include "module/contract/records/psos_header.h"
#include "platform/system/types.h"

struct EFFPAR;

/// A sample of a font: `height` rows of `width` bytes, which `data` owns by malloc.
struct tag_graphic_rectangle {
    std::int16_t width = 0;
    std::int16_t height = 0;
    std::uint8_t* data = nullptr;
};

/// One font slot; it has a font if font_header is not null. font_header, psos_header, log_font, effect_params and the
/// two spare blocks are allocated by new, the other blocks by malloc. CZelFont::ReleaseFontData frees them all, except
/// font_copy.
struct tag_font_memory {
    tag_font_header* font_header = nullptr;
    /// zel::kDirectoryEntries entries.
    tag_char_entry* char_directory = nullptr;
    /// Not used by the module.
    std::uint8_t* spare_block_a = nullptr;
    /// Run codes, big-endian; encoding_size bytes.
    std::uint8_t* encoding_data = nullptr;
    /// As in the file; aux_block_size bytes.
    std::uint8_t* aux_block = nullptr;
    /// Converted from the file's byte order.
    std::uint16_t* word_table = nullptr;
    /// 384 bytes each, as in the file.
    std::uint8_t* char_table_a = nullptr;
    std::uint8_t* char_table_b = nullptr;
    /// Not used by the module.
    std::uint8_t* spare_block_b = nullptr;
    tag_psos_header* psos_header = nullptr;
    tag_graphic_rectangle sample_a;
    tag_graphic_rectangle sample_b;
    /// Copy of this record for the host, which shares the blocks. Whoever releases the slot deletes it.
    tag_font_memory* font_copy = nullptr;
    LOGFONT* log_font = nullptr;
    EFFPAR* effect_params = nullptr;
    /// Path of the font file, in the module's form; opened again for stored glyphs.
    char file_name[MAX_PATH] = {};

    /// The directory entry of a character; null without a directory and for a code from 192 up.
    const tag_char_entry* Entry(std::uint32_t char_code) const noexcept {
        return char_directory != nullptr && char_code < zel::kDirectoryEntries ? &char_directory[char_code] : nullptr;
    }
};
