#include "inspect/rules.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace zel::inspect {

namespace {

constexpr auto kFault = Severity::kFault;
constexpr auto kNote = Severity::kNote;

constexpr const char* kRefuses = "refuses the file";
constexpr const char* kIgnores = "ignores it";

// In the order of Rule.
constexpr RuleText kRules[] = {
    {Rule::kKindOfFile, "file-type", kFault, "file_type", "500, 702, 714 or 717, or a name list", kRefuses},
    {Rule::kSectionPresent, "section-cut", kFault, nullptr, "the section is complete",
     "reads zeros for the missing bytes"},
    {Rule::kSectionNeeded, "section-cut-refused", kFault, nullptr, "the section is complete", kRefuses},
    {Rule::kNothingAfterEnd, "trailing-bytes", kFault, nullptr, "nothing follows the last section", kIgnores},
    {Rule::kPaddingAfterEnd, "trailing-zeros", kNote, nullptr, "zeros after the last section", kIgnores},
    {Rule::kUnreadField, "unread-field", kNote, nullptr, "not zero, though nothing reads it", kIgnores},
    {Rule::kTextRest, "text-rest", kNote, nullptr, "not zero after the end of the text", kIgnores},

    {Rule::kFlashFont, "flash-font", kFault, nullptr, "no flash font", "leaves it out, and shows a box"},
    {Rule::kBackground, "background", kNote, nullptr, "a background", "leaves it out"},
    {Rule::kBackgroundKind, "background-kind", kFault, "tag", "0xBBBB, 0xBBBC or 0xBBBD", kRefuses},
    {Rule::kPaletteEntries, "palette-empty", kFault, "palette_words", "at least 1", kRefuses},
    {Rule::kPaletteShort, "palette-short", kFault, "palette_words", "512", "makes the missing colours black"},
    {Rule::kPaletteLong, "palette-long", kFault, "palette_words", "512", "reads what follows from the 513th word on"},
    {Rule::kRowsPresent, "rows-missing", kFault, nullptr, "a row for each that the header announces",
     "makes empty rows at the top"},
    {Rule::kRowHeadPresent, "row-head-cut", kFault, nullptr, "8 bytes", "reads zeros for the missing bytes"},
    {Rule::kRowPresent, "row-cut", kFault, "char_count", "a record for each character",
     "reads zeros for the missing records"},
    {Rule::kEmptyRowCount, "empty-row-count", kNote, "char_count", "not zero in a row that is marked empty", kIgnores},
    {Rule::kChain, "chain", kFault, "next_char", "a record below char_count that is not in the chain yet",
     "follows the chain to char_count, or to 63; a record without character is code 0 of slot 0"},
    {Rule::kCharacterReached, "character-unreached", kFault, nullptr, "the chain includes every record",
     "leaves the character out"},
    {Rule::kLastLink, "last-link", kNote, "next_char", "the last record does not end the chain with 63",
     "shows no blank for an empty tab field of the row"},
    {Rule::kSlotRange, "slot-range", kFault, "char_font", "a slot, 0 to 15", "leaves the character out"},
    {Rule::kSlotFont, "slot-without-font", kFault, "char_font", "a slot that names a font",
     "leaves the character out, and the rest of the row"},
    {Rule::kRestOfRow, "rest-of-row", kFault, nullptr, "no character without a font before it in its row",
     "leaves the character out"},
    {Rule::kCodeRange, "code-range", kFault, "char_code", "0 to 191 in its low 8 bits",
     "passes on a character without a glyph"},
    {Rule::kCodeHighBits, "code-above-255", kNote, "char_code", "above 255", "uses the low 8 bits for the glyph"},
    {Rule::kTabVersion, "tab-version", kFault, "tab_version", "2", kRefuses},
    {Rule::kTabCount, "tab-count", kFault, "tab_words", "at most 200 records", kRefuses},
    {Rule::kTabRest, "tab-rest", kNote, "tab_words", "not a multiple of 13, the words of a record",
     "ignores the incomplete record"},
    {Rule::kTabPresent, "tab-missing", kFault, nullptr, "a record for each that the table announces",
     "leaves the field out"},
    {Rule::kTabRow, "tab-row", kFault, "tab_row", "a row of the message", "leaves the field out"},
    {Rule::kTabEnds, "tab-ends", kFault, "tab_start", "below tab_end", "leaves the field out"},
    {Rule::kTabSlot, "tab-slot", kNote, "tab_font", "not a slot that names a font",
     "takes the font that fits the row for an empty field, shows a box, and may show no blank"},

    {Rule::kBlockSize, "block-size", kFault, nullptr, "not negative", kRefuses},
    {Rule::kSampleSize, "sample-size", kFault, nullptr, "not negative", kRefuses},
    {Rule::kSampleWidth, "sample-width", kFault, nullptr, "at least 1 byte in a row", kRefuses},
    {Rule::kFontSize, "font-size", kFault, nullptr, "at most 4,194,304 bytes for all blocks of a font", kRefuses},
    {Rule::kPlainFont, "font-not-plain", kNote, "font_flags", "bit 0x20 is clear",
     "shows the box \"Tessor Encoded Data!\""},
    {Rule::kEncodingRead, "encoding-not-read", kNote, "encoding_size",
     "not zero, though the flags announce no encoding data", "reads no encoding data"},
    {Rule::kSampleReplaced, "sample-replaced", kNote, nullptr, "a sample block before another one",
     "keeps the last one"},
    {Rule::kEdgeType, "edge-type", kNote, "edge_type", "above 3", "draws no edge"},
    {Rule::kFontId, "font-id", kNote, "font_id_text", "not 4 digits", "takes the digits at its beginning"},
    {Rule::kGlyphKind, "glyph-kind", kNote, "glyph_kind", "not zero, but neither stored nor run-coded",
     "has no glyph for the code"},
    {Rule::kRunCodesRead, "glyph-without-encoding", kFault, "glyph_kind", "encoding data for a run-coded glyph",
     "has no pixels for the code"},
    {Rule::kRunCodesBegin, "glyph-outside-encoding", kFault, "glyph_offset", "below encoding_size",
     "has no pixels for the code"},
    {Rule::kRunCodesEnd, "glyph-past-encoding", kFault, "glyph_offset", "codes that end within the encoding data",
     "ends the glyph with the encoding data"},
    {Rule::kRunCodesLimit, "glyph-endless", kFault, "glyph_offset",
     "at most 500 lines, 500 runs in a line and 262,144 codes", "cuts the glyph there"},
    {Rule::kEncodingUsed, "encoding-unused", kNote, nullptr, "encoding data of no glyph", kIgnores},
    {Rule::kGlyphHead, "glyph-head-cut", kFault, nullptr, "a head of 12 bytes",
     "stops the import of a message at this character"},
    {Rule::kGlyphSize, "glyph-size", kFault, nullptr, "a width and a height of at least 1", "draws nothing"},
    {Rule::kGlyphRecord, "glyph-record", kFault, "length", "12 bytes and 4 for each pixel",
     "draws no pixels after the record"},
    {Rule::kGlyphPixels, "glyph-cut", kFault, "length", "a record within the file", "draws no missing pixels"},
    {Rule::kGlyphRest, "glyph-rest", kNote, nullptr, "bytes after the pixels of a stored glyph", kIgnores},

    {Rule::kPictureHead, "picture-head-cut", kFault, nullptr, "a head of 12 bytes", "has no picture, and warns"},
    {Rule::kPictureSize, "picture-size", kFault, nullptr, "a width and a height of at least 1",
     "has no picture, and warns"},
    {Rule::kPictureRecord, "picture-record", kFault, "length", "12 bytes and 4 for each pixel",
     "has no picture, and warns"},
    {Rule::kPicturePixels, "picture-cut", kFault, "length", "a record within the file", "has no picture, and warns"},
    {Rule::kPictureLimit, "picture-limit", kFault, nullptr, "at most 4096 x 4096 pixels", "has no picture, and warns"},

    {Rule::kListText, "list-text", kFault, nullptr, "text", "reads the bytes as characters"},
    {Rule::kListSize, "list-size", kFault, nullptr, "at most 4,194,304 bytes", "reads no further"},
    {Rule::kListLine, "list-line", kFault, nullptr, "at most 198 characters", "reads the line as several"},
    {Rule::kListField, "list-field", kFault, nullptr, "at most 59 characters in a name", "keeps the name whole"},
    {Rule::kListNul, "list-nul", kFault, nullptr, "no NUL in a line", "ends the line there"},
    {Rule::kListEndOfText, "list-end-of-text", kFault, nullptr, "nothing after a byte 26", "reads no further"},
    {Rule::kListNumber, "list-number", kFault, nullptr, "at most 4 digits", "takes the first 4"},
    {Rule::kListEntry, "list-entry", kNote, nullptr, "no entry", "passes over the line"},
    {Rule::kListRepeated, "list-repeated", kNote, nullptr, "an entry that a later line replaces", "takes the last one"},
    {Rule::kListLastLine, "list-last-line", kNote, nullptr, "a last line without line end", "reads it"},
};
static_assert(std::size(kRules) == static_cast<std::size_t>(Rule::kCount));
static_assert([] {
    for (std::size_t i = 0; i < std::size(kRules); ++i) {
        if (kRules[i].rule != static_cast<Rule>(i)) return false;
    }
    return true;
}());

}  // namespace

const RuleText& TextOf(Rule rule) noexcept {
    return kRules[static_cast<std::size_t>(rule)];
}

}  // namespace zel::inspect
