#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "module/contract/records/font_memory.h"
#include "platform/system/types.h"

/// What the host's callback receives for each character. The offsets are those of a 32-bit system, where the record has
/// 104 bytes. A whole message uses one record and one LOGFONT: a field that a call does not set keeps its value, and
/// neither pointer is valid after the call.
struct tag_CharInf {
    LOGFONT* log_font;            //   0
    std::int32_t x;               //   4  pixels
    std::int32_t y;               //   8  pixels; the same for all characters of a row
    std::uint8_t place_flag;      //  12
    std::uint8_t row_start;       //  13  1 on the first character of a row and on a row without characters
    std::uint8_t padding_14[2];   //  14
    std::int32_t row_index;       //  16
    std::uint8_t message_start;   //  20  1 until the first call for a character has returned
    std::uint8_t padding_21[3];   //  21
    std::int32_t left_margin;     //  24  pixels
    std::int32_t base_shift;      //  28  pixels from y down to the character
    std::int32_t reserved_zero;   //  32
    std::int32_t row_top;         //  36  pixels; set with row_depth when a row starts
    std::int32_t row_depth;       //  40  pixels
    COLORREF face_colour;         //  44
    float effect_ratio;           //  48  0.75
    std::int32_t edge_type;       //  52
    std::int32_t edge_angle;      //  56  degrees
    std::int32_t edge_size;       //  60  pixels
    COLORREF edge_colour;         //  64
    tag_font_memory* font_copy;   //  68  null for a character in text form
    std::int32_t slot;            //  72  -1 for a row without characters
    std::int32_t char_code;       //  76  all 10 bits
    std::int32_t colour_set;      //  80  palette_set for BuildMFData, -1 without one
    std::int32_t glyph_metric;    //  84
    std::int32_t glyph_height;    //  88  bitmap form only, pixels
    std::int32_t glyph_y;         //  92  bitmap form only, pixels
    std::int32_t glyph_step;      //  96  bitmap form only, pixels to the next character
    bool mf_flag;                 // 100  the flag of a stored bitmap glyph
    std::uint8_t padding_101[3];  // 101
};
static_assert(std::is_trivially_copyable_v<tag_CharInf>);
static_assert(sizeof(void*) != 4 || sizeof(tag_CharInf) == 104);
static_assert(sizeof(void*) != 4 ||
              (offsetof(tag_CharInf, log_font) == 0 && offsetof(tag_CharInf, x) == 4 && offsetof(tag_CharInf, y) == 8 &&
               offsetof(tag_CharInf, place_flag) == 12 && offsetof(tag_CharInf, row_start) == 13 &&
               offsetof(tag_CharInf, row_index) == 16 && offsetof(tag_CharInf, message_start) == 20 &&
               offsetof(tag_CharInf, left_margin) == 24 && offsetof(tag_CharInf, base_shift) == 28 &&
               offsetof(tag_CharInf, reserved_zero) == 32 && offsetof(tag_CharInf, row_top) == 36 &&
               offsetof(tag_CharInf, row_depth) == 40 && offsetof(tag_CharInf, face_colour) == 44 &&
               offsetof(tag_CharInf, effect_ratio) == 48 && offsetof(tag_CharInf, edge_type) == 52 &&
               offsetof(tag_CharInf, edge_angle) == 56 && offsetof(tag_CharInf, edge_size) == 60 &&
               offsetof(tag_CharInf, edge_colour) == 64 && offsetof(tag_CharInf, font_copy) == 68 &&
               offsetof(tag_CharInf, slot) == 72 && offsetof(tag_CharInf, char_code) == 76 &&
               offsetof(tag_CharInf, colour_set) == 80 && offsetof(tag_CharInf, glyph_metric) == 84 &&
               offsetof(tag_CharInf, glyph_height) == 88 && offsetof(tag_CharInf, glyph_y) == 92 &&
               offsetof(tag_CharInf, glyph_step) == 96 && offsetof(tag_CharInf, mf_flag) == 100));

class CWnd;

namespace zel {

/// The host's callback: the window of the import, the record, and the character, which is the low 8 bits of char_code
/// or 13 for a row without characters.
using OnCharCallback = void (*)(CWnd*, tag_CharInf*, unsigned int);

}  // namespace zel
