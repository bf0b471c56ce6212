#include "inspect/font_inspector.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "inspect/findings.h"
#include "inspect/glyph_check.h"
#include "inspect/section_list.h"
#include "inspect/unread_fields.h"
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

/// Offsets of header fields in the file.
constexpr std::uint64_t kFontIdAt = sizeof(tag_psos_header) + offsetof(tag_font_header, font_id_text);
constexpr std::uint64_t kEdgeAt = sizeof(tag_psos_header) + offsetof(tag_font_header, edge_bits);
constexpr std::uint64_t kEncodingSizeAt = sizeof(tag_psos_header) + offsetof(tag_font_header, encoding_size);
constexpr std::uint64_t kAuxSizeAt = sizeof(tag_psos_header) + offsetof(tag_font_header, aux_block_size);
constexpr std::uint64_t kFlagsAt = sizeof(tag_psos_header) + offsetof(tag_font_header, font_flags);
constexpr std::uint64_t kWordTableAt = sizeof(tag_psos_header) + offsetof(tag_font_header, word_table_size);

/// Reports why a font is refused, unless a section is cut short.
void ReportRefusal(font::FontOutcome outcome, const tag_font_memory& slot, const SectionList& found,
                   FileReport& report) {
    if (outcome == font::FontOutcome::kTooLarge) {
        const Section& last = found.sections.back();
        AddFinding(report, Rule::kFontSize, {last.offset, last.size}).section = last.name;
        return;
    }
    if (outcome == font::FontOutcome::kShortSampleRow && found.sections.back().present == found.sections.back().size) {
        AddFinding(report, Rule::kSampleWidth, {found.sections.back().offset, sizeof(tag_samp_struct)}).section =
            "sample block";
        return;
    }
    if (outcome != font::FontOutcome::kNoMemory || slot.font_header == nullptr) return;
    const tag_font_header& header = *slot.font_header;
    if (header.aux_block_size < 0) {
        AddFinding(report, Rule::kBlockSize, {kAuxSizeAt, 2, header.aux_block_size}).field = "aux_block_size";
    } else if (header.WordTableBytes() < 0) {
        AddFinding(report, Rule::kBlockSize, {kWordTableAt, 4, header.WordTableBytes()}).field = "word_table_size";
    } else {
        AddFinding(report, Rule::kSampleSize, {found.sections.back().offset, sizeof(tag_samp_struct)}).section =
            "sample block";
    }
}

bool IsFourDigits(std::string_view text) {
    return text.size() == 4 && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

/// Notes what is unusual in a header.
void CheckHeader(const tag_font_header& header, FileReport& report) {
    if (!IsFourDigits(header.IdText())) AddFinding(report, Rule::kFontId, {kFontIdAt, 4}).section = "font header";
    if (header.EdgeType() > static_cast<int>(EdgeType::kOffset))
        AddFinding(report, Rule::kEdgeType, {kEdgeAt, 1, header.EdgeType()}).section = "font header";
    const bool leading = header.font_flags == kFontFlagsLeadingSample;
    if ((header.font_flags & kFontPlain) == 0 && !leading && header.encoding_size != 0) {
        AddFinding(report, Rule::kEncodingRead, {kEncodingSizeAt, 4, header.encoding_size}).section = "font header";
    }
}

/// Reports what isn't zero of the fields that nothing reads, apart from the directory and the stored glyphs.
void CheckUnread(std::span<const std::uint8_t> bytes, const SectionList& found, FileReport& report) {
    static constexpr UnreadField kHeader[] = {{"dword at 74", 74, 4, 0xFFFFFFFF},
                                              {"word at 82", 82, 2, 0xFFFF},
                                              {"word at 86", 86, 2, 0xFFFF},
                                              {"dword at 88", 88, 4, 0xFFFFFFFF},
                                              {"word at 92", 92, 2, 0xFFFF},
                                              {"dword at 94", 94, 4, 0xFFFFFFFF},
                                              {"word at 106", 106, 2, 0xFFFF},
                                              {"word at 108", 108, 2, 0xFFFF},
                                              {"word at 110", 110, 2, 0xFFFF},
                                              {"word at 112", 112, 2, 0xFFFF},
                                              {"word at 114", 114, 2, 0xFFFF},
                                              {"word at 116", 116, 2, 0xFFFF},
                                              {"word_table_size, high word", 120, 2, 0xFFFF},
                                              {"word at 126", 126, 2, 0xFFFF}};
    static constexpr UnreadField kSample[] = {{"samp_first_word", 0, 2, 0xFFFF}};
    CheckPsosHeader(bytes, report);
    constexpr std::size_t kHeaderAt = sizeof(tag_psos_header);
    if (bytes.size() > kHeaderAt) {
        const auto header = bytes.subspan(kHeaderAt, std::min(sizeof(tag_font_header), bytes.size() - kHeaderAt));
        UnreadFields fields(kHeader, RecordKind::kFile, "font header");
        fields.Check(header, {.offset = kHeaderAt});
        fields.Report(report);
        CheckTextRest(header.first(std::min(sizeof(tag_font_header::font_name), header.size())),
                      {.section = "font header", .field = "font_name"}, {.offset = kHeaderAt}, report);
    }
    UnreadFields samples(kSample, RecordKind::kFile, "sample block");
    for (const Section& section : found.sections) {
        if (section.name == "sample block" && section.present != 0)
            samples.Check(bytes.subspan(static_cast<std::size_t>(section.offset)), {.offset = section.offset});
    }
    samples.Report(report);
}

void CheckReplacedSample(const SectionList& found, FileReport& report) {
    const Section* first = found.Find("sample block");
    if (first != nullptr && std::ranges::count(found.sections, "sample block", &Section::name) > 1) {
        AddFinding(report, Rule::kSampleReplaced, {first->offset, first->size}).section = "sample block";
    }
}

}  // namespace

void InspectFont(std::span<const std::uint8_t> bytes, FileReport& report) {
    font::LoadedFont loaded;
    const tag_font_memory& slot = loaded.slot;
    SectionList found;
    const font::FontOutcome outcome = font::LoadFont(bytes, loaded, &found);
    const bool refused = outcome != font::FontOutcome::kRead;
    FontReport& font = report.font.emplace();
    report.sections = found.sections;
    report.reason = Reason(outcome, slot, found);
    if (refused) ReportRefusal(outcome, slot, found, report);
    ReportCutSections(report, refused && report.findings.empty());
    if (slot.psos_header != nullptr && outcome != font::FontOutcome::kShortPsosHeader)
        font.type_name = Printable(slot.psos_header->TypeName());
    const bool has_header = slot.font_header != nullptr && outcome != font::FontOutcome::kShortFontHeader;
    if (has_header) {
        FillHeader(*slot.font_header, font);
        CheckHeader(*slot.font_header, report);
    }
    if (has_header && slot.char_directory != nullptr && outcome != font::FontOutcome::kShortDirectory) {
        CheckGlyphs(bytes, slot, outcome, report);
    }
    if (loaded.tessor) {
        Finding& finding = AddFinding(report, Rule::kPlainFont, {kFlagsAt, 2, slot.font_header->font_flags});
        finding.section = "font header";
        finding.what = "the import shows the box \"Tessor Encoded Data!\", whatever is skipped";
    }
    CheckReplacedSample(found, report);
    if (report.depth == Depth::kEveryByte) CheckUnread(bytes, found, report);
    if (!refused && found.End() < bytes.size()) {
        ReportTrailingBytes(bytes.subspan(static_cast<std::size_t>(found.End())), report);
    }
    Conclude(report, refused);
}

}  // namespace zel::inspect
