#pragma once

#include <cstdint>

namespace zel::inspect {

enum class Severity : std::uint8_t {
    /// A rule of the format is broken, or an import loses something of the file.
    kFault,
    /// Unusual, or read by nothing, but allowed and without loss.
    kNote,
};

/// What is checked, for every kind of file.
enum class Rule : std::uint8_t {
    // Any file
    kKindOfFile,
    kSectionPresent,
    kSectionNeeded,
    kNothingAfterEnd,
    kPaddingAfterEnd,
    kUnreadField,
    kTextRest,
    // Messages
    kFlashFont,
    kBackground,
    kBackgroundKind,
    kPaletteEntries,
    kPaletteShort,
    kPaletteLong,
    kRowsPresent,
    kRowHeadPresent,
    kRowPresent,
    kEmptyRowCount,
    kChain,
    kCharacterReached,
    kLastLink,
    kSlotRange,
    kSlotFont,
    kRestOfRow,
    kCodeRange,
    kCodeHighBits,
    kTabVersion,
    kTabCount,
    kTabRest,
    kTabPresent,
    kTabRow,
    kTabEnds,
    kTabSlot,
    // Fonts
    kBlockSize,
    kSampleSize,
    kSampleWidth,
    kFontSize,
    kPlainFont,
    kEncodingRead,
    kSampleReplaced,
    kEdgeType,
    kFontId,
    kGlyphKind,
    kRunCodesRead,
    kRunCodesBegin,
    kRunCodesEnd,
    kRunCodesLimit,
    kEncodingUsed,
    kGlyphHead,
    kGlyphSize,
    kGlyphRecord,
    kGlyphPixels,
    kGlyphRest,
    // RGBA pictures
    kPictureHead,
    kPictureSize,
    kPictureRecord,
    kPicturePixels,
    kPictureLimit,
    // Name lists
    kListText,
    kListSize,
    kListLine,
    kListField,
    kListNul,
    kListEndOfText,
    kListNumber,
    kListEntry,
    kListRepeated,
    kListLastLine,
    kCount,
};

/// The texts of a rule; string literals.
struct RuleText {
    Rule rule;
    /// Stable name for programs.
    const char* name;
    Severity severity;
    /// The field that the rule is about; null for bytes or a record as a whole.
    const char* field;
    /// What the format requires, or for a note what the places are.
    const char* requirement;
    /// What an import makes of it.
    const char* effect;
};
const RuleText& TextOf(Rule rule) noexcept;

}  // namespace zel::inspect
