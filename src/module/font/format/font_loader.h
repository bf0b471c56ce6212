#pragma once

#include "module/contract/records/font_memory.h"
#include "module/message/format/byte_source.h"
#include "module/message/format/section_observer.h"

namespace zel::font {

/// How the reading of a font file ended; 0 is the only success. What the user hears stands in the same order in
/// read_font.cpp.
enum class FontOutcome {
    kRead = 0,
    kShortPsosHeader,
    kWrongType,
    kShortFontHeader,
    kNoDirectoryMemory,
    kShortDirectory,
    kShortEncoding,         ///< encoding data in the ordinary place.
    kShortLeadingEncoding,  ///< encoding data straight after the directory (font_flags 18).
    kShortLeadingSample,    ///< head of the sample block behind them.
    kShortSampleRow,
    kShortBlock,  ///< auxiliary block, word table, character tables, sample head, or the length of a stored glyph.
    kNoMemory,    ///< also for a size that is negative.
};

/// Reads a font file into an empty slot: every block, the stored glyphs located and not read. Needs no path, dialog or
/// host.
/// @param slot      takes the blocks, also those read before a failure; whoever holds it frees them with
/// ReleaseFontData.
/// @param tessor    set when the font isn't plain: its encoding data, if any, can't be taken from the ordinary place.
/// @param observer  may be null.
FontOutcome LoadFont(message::ByteSource& file, tag_font_memory& slot, bool& tessor,
                     message::SectionObserver* observer = nullptr);

/// Bytes of each of the two character tables.
inline constexpr std::size_t kCharTableSize = 384;

}  // namespace zel::font
