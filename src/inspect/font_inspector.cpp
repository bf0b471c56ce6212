#include "inspect/font_inspector.h"

#include "inspect/glyph_check.h"
#include "inspect/section_list.h"
#include "inspect/words.h"
#include "module/contract/records/edge.h"
#include "module/font/format/font_loader.h"

namespace zel::inspect {

namespace {

std::string NoMemoryReason(const tag_font_header& header) {
    if (header.aux_block_size < 0)
        return "its auxiliary block has a negative size, " + std::to_string(header.aux_block_size);
    if (header.WordTableBytes() < 0)
        return "its word table has a negative size, " + std::to_string(header.WordTableBytes());
    return "a sample in it has a negative size";
}

std::string Reason(font::FontOutcome outcome, const tag_font_memory& slot, const SectionList& found) {
    switch (outcome) {
        case font::FontOutcome::kRead:
            return {};
        case font::FontOutcome::kWrongType:
            return "it is not a font";
        case font::FontOutcome::kNoDirectoryMemory:
            return "out of memory for its character directory";
        case font::FontOutcome::kNoMemory:
            return slot.font_header != nullptr ? NoMemoryReason(*slot.font_header) : "out of memory";
        case font::FontOutcome::kTooLarge:
            return "its " + found.sections.back().name + " of " + Count(found.sections.back().size, "byte") +
                   " exceeds the limit of " + Count(font::kMaxFontBytes, "byte") + " for all blocks of a font";
        case font::FontOutcome::kShortSampleRow:
            if (found.sections.back().present == found.sections.back().size)
                return "a sample in it has rows of no bytes";
            break;
        case font::FontOutcome::kShortPsosHeader:
        case font::FontOutcome::kShortFontHeader:
        case font::FontOutcome::kShortDirectory:
        case font::FontOutcome::kShortEncoding:
        case font::FontOutcome::kShortLeadingEncoding:
        case font::FontOutcome::kShortLeadingSample:
        case font::FontOutcome::kShortBlock:
            break;
    }
    const Section& last = found.sections.back();
    if (last.count > 1) return "the file ends in its " + Count(static_cast<std::uint64_t>(last.count), last.name);
    return "its " + last.name + " is cut short, " + Number(last.present) + " of " + Count(last.size, "byte") +
           " present";
}

std::string FlagsInWords(int flags) {
    std::vector<std::string> words;
    if (flags == kFontFlagsLeadingSample) {
        words.emplace_back("encoding data and a sample block first");
    } else {
        words.emplace_back((flags & kFontPlain) != 0 ? "plain" : "not plain, so that its encoding data isn't read");
    }
    if ((flags & kFontCharTables) != 0) words.emplace_back("character tables");
    if ((flags & kFontOwnLimits) != 0) words.emplace_back("gives no limits to empty rows");
    return Listed(words);
}

void FillHeader(const tag_font_header& header, FontReport& font) {
    font.name = Printable(header.Name());
    font.id = Printable(header.IdText());
    font.height = header.font_height;
    font.row_top_offset = header.row_top_offset;
    font.row_inset = header.row_inset;
    font.edge_type = header.EdgeType();
    font.edge_angle = EdgeAngle(header.EdgeDirection());
    font.edge_size = header.edge_size;
    font.flags = header.font_flags;
    font.flags_in_words = FlagsInWords(header.font_flags);
    font.encoding_size = header.encoding_size;
}

}  // namespace

void InspectFont(std::span<const std::uint8_t> bytes, FileReport& report) {
    font::LoadedFont loaded;
    const tag_font_memory& slot = loaded.slot;
    SectionList found;
    const font::FontOutcome outcome = font::LoadFont(bytes, loaded, &found);
    FontReport& font = report.font.emplace();
    report.sections = found.sections;
    report.reason = Reason(outcome, slot, found);
    ReportCutSections(report);
    if (slot.psos_header != nullptr && outcome != font::FontOutcome::kShortPsosHeader)
        font.type_name = Printable(slot.psos_header->TypeName());
    const bool has_header = slot.font_header != nullptr && outcome != font::FontOutcome::kShortFontHeader;
    if (has_header) FillHeader(*slot.font_header, font);
    if (has_header && slot.char_directory != nullptr && outcome != font::FontOutcome::kShortDirectory) {
        CheckGlyphs(bytes, slot, outcome, report);
    }
    if (loaded.tessor)
        report.remarks.emplace_back("the import shows the box \"Tessor Encoded Data!\", whatever is skipped");
    if (outcome == font::FontOutcome::kRead && found.End() < bytes.size()) {
        ReportTrailingBytes(bytes.subspan(static_cast<std::size_t>(found.End())), report);
    }
    report.verdict = outcome != font::FontOutcome::kRead ? Verdict::kBroken
                     : report.defects.empty()            ? Verdict::kWhole
                                                         : Verdict::kReadable;
}

}  // namespace zel::inspect
