#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "module/contract/records/video_standard.h"

namespace zel {

/// Bits of section_flags; stored values.
enum class SectionFlag : std::uint16_t {
    /// A palette follows the rows. Clear: the default palette.
    kPalette = 0x0001,
    /// A background follows.
    kBackground = 0x0002,
    /// A tab table follows.
    kTabs = 0x0020,
    /// A flash font precedes the message header.
    kFlashFont = 0x0100,
    /// A PAL message. Clear: NTSC.
    kPal = 0x8000,
};

}  // namespace zel

/// Second block of a message file, 16 bytes at file offset 136.
struct tag_msg_flags {
    std::uint16_t section_flags;  //  0  SectionFlag bits
    std::uint16_t unread_2[7];    //  2

    bool Has(zel::SectionFlag flag) const noexcept { return (section_flags & static_cast<std::uint16_t>(flag)) != 0; }
    /// The message's own video standard, which need not be the host's.
    zel::VideoStandard Standard() const noexcept {
        return Has(zel::SectionFlag::kPal) ? zel::VideoStandard::kPal : zel::VideoStandard::kNtsc;
    }
    /// Number of lines above the picture in that standard. Stored vertical positions are too large by it.
    std::uint16_t LineOffset() const noexcept { return static_cast<std::uint16_t>(zel::LineOffset(Standard())); }
    /// Active lines of that standard.
    int Lines() const noexcept { return zel::ActiveLines(Standard()); }
};
static_assert(sizeof(tag_msg_flags) == 16 && std::is_trivially_copyable_v<tag_msg_flags>);

namespace zel {

inline constexpr int kFontSlots = 16;
/// Entry of font_numbers for a slot without a font.
inline constexpr std::uint16_t kNoFont = 0xFFFF;

}  // namespace zel

/// Message values, 26 words.
struct tag_msg_header {
    std::uint16_t unread_0;                       //  0
    std::uint16_t unread_2;                       //  2
    std::uint16_t last_row;                       //  4  the message has last_row + 1 rows
    std::uint16_t frame_left;                     //  6  x of a row without characters, pixels
    std::uint16_t frame_top;                      //  8  pixels; in memory less the line offset, in 16 bits
    std::uint16_t frame_right;                    // 10
    std::uint16_t frame_bottom;                   // 12  pixels; in memory less the line offset, in 16 bits
    std::uint16_t unread_14[3];                   // 14
    std::uint16_t font_numbers[zel::kFontSlots];  // 20  number of each slot's font, kNoFont for none

    int RowCount() const noexcept { return last_row + 1; }
};
static_assert(sizeof(tag_msg_header) == 52 && std::is_trivially_copyable_v<tag_msg_header>);
static_assert(offsetof(tag_msg_header, last_row) == 4 && offsetof(tag_msg_header, font_numbers) == 20);
