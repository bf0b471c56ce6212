#pragma once

#include <span>

#include "module/contract/records/font_memory.h"
#include "module/message/format/byte_source.h"
#include "module/message/format/section_observer.h"

namespace zel::font {

/// Result of reading a font file. The message boxes are in the same order in read_font.cpp.
enum class FontOutcome {
    kRead = 0,
    kShortPsosHeader,
    kWrongType,
    kShortFontHeader,
    kNoDirectoryMemory,
    kShortDirectory,
    /// Encoding data in the ordinary place.
    kShortEncoding,
    /// Encoding data directly after the directory (font_flags 18).
    kShortLeadingEncoding,
    /// Head of the sample block after such encoding data.
    kShortLeadingSample,
    kShortSampleRow,
    /// Auxiliary block, word table, character tables, sample head, or the length of a stored glyph.
    kShortBlock,
    /// Also for a negative size.
    kNoMemory,
    /// The blocks exceed kMaxFontBytes.
    kTooLarge,
};

/// The contents of a font file; owns the blocks of its slot. A block is null when the font has none or when reading
/// ended before it.
struct LoadedFont {
    LoadedFont() = default;
    LoadedFont(const LoadedFont&) = delete;
    LoadedFont& operator=(const LoadedFont&) = delete;
    ~LoadedFont();

    /// Empties the object. The caller frees the blocks of the result with ReleaseFontBlocks.
    tag_font_memory Release() noexcept;

    /// file_name, log_font, effect_params and font_copy are not set.
    tag_font_memory slot;
    /// The font isn't plain: encoding data in the ordinary place can't be decoded and was not read.
    bool tessor = false;
};

/// Most bytes of a font's blocks together: some 5000 run codes for each of the 192 characters. A sparse file can
/// announce any size, and a message has 16 fonts.
inline constexpr std::uint64_t kMaxFontBytes = std::uint64_t{4} << 20;

/// Reads a font file: all blocks. The stored glyphs are only located.
/// @param font      an empty one; receives everything that was read, also when the outcome isn't kRead.
/// @param observer  may be null.
FontOutcome LoadFont(message::ByteSource& file, LoadedFont& font, message::SectionObserver* observer = nullptr);

/// Reads a font file in memory, as above.
/// @param file  the whole file; needed during the call only.
FontOutcome LoadFont(std::span<const std::uint8_t> file, LoadedFont& font,
                     message::SectionObserver* observer = nullptr);

/// Size of each of the two character tables in bytes.
inline constexpr std::size_t kCharTableSize = 384;

}  // namespace zel::font
