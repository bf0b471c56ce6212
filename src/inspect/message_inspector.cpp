#include "inspect/message_inspector.h"

#include <algorithm>

#include "inspect/findings.h"
#include "inspect/glyph_check.h"
#include "inspect/row_check.h"
#include "inspect/section_list.h"
#include "inspect/tab_check.h"
#include "inspect/unread_fields.h"
#include "inspect/words.h"
#include "module/font/format/stored_glyph.h"
#include "module/message/format/big_endian_cursor.h"
#include "module/message/format/convert_tab_field.h"
#include "module/message/format/message_loader.h"

namespace zel::inspect {

namespace {

/// Of the picture of an RGBA file, in pixels. The host shows no larger one.
constexpr int kLargestPictureSide = 4096;

/// A word of a section; 0 if the section is null or the file ends before the word.
std::uint16_t WordAt(std::span<const std::uint8_t> bytes, const Section* section, std::size_t offset) {
    if (section == nullptr) return 0;
    const std::uint64_t at = std::min<std::uint64_t>(section->offset + offset, bytes.size());
    return message::BigEndianCursor(bytes.subspan(static_cast<std::size_t>(at))).U16();
}

/// The reason of one refusal, apart from a section that is cut short.
struct Refusal {
    message::MessageOutcome outcome;
    const char* section;
    /// Number of bytes that the section needs for `explain`; with fewer, it is cut short. 0: the whole section.
    std::uint64_t needed;
    /// Gives the reason. Null if only a section that is cut short is refused with this outcome.
    std::string (*explain)(const Section& section, unsigned first_word);
    /// Of that reason.
    Rule rule = Rule::kSectionNeeded;
    /// Offset in the section of the word that isn't as the rule requires.
    std::size_t word_at = 0;
};

std::string ExplainTabVersion(const Section& /*tabs*/, unsigned version) {
    return "its tab table is of version " + std::to_string(version) + ", but only 2 is known";
}

constexpr Refusal kRefusals[] = {
    {message::MessageOutcome::kShortFileHeader, "Psos file header", 0, nullptr},
    {message::MessageOutcome::kShortFlags, "section flags", 0, nullptr},
    {message::MessageOutcome::kShortPalette, "palette", 0,
     [](const Section&, unsigned) -> std::string { return "its palette has no entries"; }, Rule::kPaletteEntries, 2},
    {message::MessageOutcome::kUnknownBackground, "background", 2,
     [](const Section&, unsigned kind) { return "its background is of an unknown kind, " + Hex(kind); },
     Rule::kBackgroundKind},
    {message::MessageOutcome::kShortBackground, "background", 0, nullptr},
    {message::MessageOutcome::kTabVersionAbove2, "tab table", 2, ExplainTabVersion, Rule::kTabVersion},
    {message::MessageOutcome::kTabVersionBelow2, "tab table", 2, ExplainTabVersion, Rule::kTabVersion},
    {message::MessageOutcome::kTooManyTabs, "tab table", 1,
     [](const Section& tabs, unsigned) {
         return "its tab table has " + Count((tabs.size - kTabHeadSize) / message::kTabRecordSize, "record") +
                ", but at most " + std::to_string(message::kMaxTabs) + " are read";
     },
     Rule::kTabCount, 2},
};

/// The reason of a refusal, with a finding about it unless a section is cut short, which has one already.
std::string Reason(message::MessageOutcome outcome, std::span<const std::uint8_t> bytes, const SectionList& found,
                   FileReport& report) {
    if (outcome == message::MessageOutcome::kRead) return {};
    const auto* const refusal = std::ranges::find(kRefusals, outcome, &Refusal::outcome);
    if (refusal == std::end(kRefusals)) return "it is not a message";
    const Section* section = found.Find(refusal->section);
    if (section == nullptr) return "cut short";
    const std::uint64_t needed = refusal->needed != 0 ? refusal->needed : section->size;
    if (refusal->explain != nullptr && section->present >= needed) {
        const Place place{section->offset + refusal->word_at, 2, WordAt(bytes, section, refusal->word_at)};
        AddFinding(report, refusal->rule, place).section = section->name;
        return refusal->explain(*section, WordAt(bytes, section, 0));
    }
    return "its " + section->name + " is cut short, " + Number(section->present) + " of " +
           Count(section->size, "byte") + " present";
}

constexpr std::uint32_t ScreenColour(COLORREF colour) {
    return (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
}

void FillPalette(const message::LoadedMessage& loaded, std::span<const std::uint8_t> bytes, const SectionList& found,
                 FileReport& report) {
    MessageReport& message = *report.message;
    message.own_palette = loaded.flags->Has(SectionFlag::kPalette);
    const Section* section = found.Find("palette");
    if (loaded.palette == nullptr || (section != nullptr && section->present != section->size)) return;
    for (const auto& set : loaded.palette->colour_sets) {
        message.palette.push_back(
            {ScreenColour(PackColour(set[kFaceEntry])), ScreenColour(PackColour(set[kEdgeEntry]))});
    }
    constexpr unsigned kWholePalette = kColourSets * kSetEntries * 2;
    const unsigned words = WordAt(bytes, section, 2);
    if (section == nullptr || words == 0) return;
    if (words == kWholePalette) return;
    const bool is_short = words < kWholePalette;
    Finding& finding =
        AddFinding(report, is_short ? Rule::kPaletteShort : Rule::kPaletteLong, {section->offset + 2, 2, words});
    finding.section = "palette";
    finding.what = is_short ? "palette: " + Number(words) + " of 512 words; entries from " + std::to_string(words / 2) +
                                  " on are black"
                            : "palette: " + Number(words) + " words, but only 512 are read; what follows is read " +
                                  Count((words - kWholePalette) * 2, "byte") + " early";
}

void FillHead(const message::LoadedMessage& loaded, std::span<const std::uint8_t> bytes, const SectionList& found,
              FileReport& report) {
    MessageReport& message = *report.message;
    message.standard = loaded.flags->Standard();
    message.y_offset = loaded.y_offset.value_or(0);
    if (const Section* header = found.Find("message header")) {
        for (std::size_t i = 0; i < message.frame.size(); ++i) message.frame[i] = WordAt(bytes, header, 6 + 2 * i);
    }
    if (const Section* background = found.Find("background"); background != nullptr && background->size > 2) {
        message.background = Hex(WordAt(bytes, background, 0)) + ", " + Number((background->size - 2) / 2) +
                             " words, left out on import";
        AddFinding(report, Rule::kBackground, {background->offset, background->present}).section = "background";
    }
    if (const Section* flash = found.Find("flash font")) {
        message.flash_font = Count(flash->size, "byte") + ", left out on import";
        Finding& finding = AddFinding(report, Rule::kFlashFont, {flash->offset, flash->present});
        finding.section = "flash font";
        finding.what = "its flash font is left out on import, which shows a box";
    }
}

/// Reports what isn't zero of the fields that nothing reads, apart from the records of rows and tab fields.
void CheckUnreadWords(std::span<const std::uint8_t> bytes, const SectionList& found, FileReport& report) {
    static constexpr UnreadField kFlags[] = {{"section_flags, other bits", 0, 2, 0x7EDC},
                                             {"word at 2", 2, 2, 0xFFFF},
                                             {"word at 4", 4, 2, 0xFFFF},
                                             {"word at 6", 6, 2, 0xFFFF},
                                             {"word at 8", 8, 2, 0xFFFF},
                                             {"word at 10", 10, 2, 0xFFFF},
                                             {"word at 12", 12, 2, 0xFFFF},
                                             {"word at 14", 14, 2, 0xFFFF}};
    static constexpr UnreadField kHeader[] = {{"word at 0", 0, 2, 0xFFFF},
                                              {"word at 2", 2, 2, 0xFFFF},
                                              {"word at 14", 14, 2, 0xFFFF},
                                              {"word at 16", 16, 2, 0xFFFF},
                                              {"word at 18", 18, 2, 0xFFFF}};
    static constexpr UnreadField kPalette[] = {{"palette_lead", 0, 2, 0xFFFF}};
    CheckPsosHeader(bytes, report);
    const auto check = [&](const char* name, std::span<const UnreadField> fields) {
        const Section* section = found.Find(name);
        if (section == nullptr || section->offset >= bytes.size()) return;
        UnreadFields unread(fields, RecordKind::kFile, name);
        unread.Check(
            bytes.subspan(static_cast<std::size_t>(section->offset), static_cast<std::size_t>(section->present)),
            {.offset = section->offset});
        unread.Report(report);
    };
    check("section flags", kFlags);
    check("message header", kHeader);
    check("palette", kPalette);
}
static_assert((0x7EDC & (0x0001 | 0x0002 | 0x0020 | 0x0100 | 0x8000)) == 0 &&
              (0x7EDC | 0x0001 | 0x0002 | 0x0020 | 0x0100 | 0x8000) == 0xFFFF);

}  // namespace

void InspectMessage(std::span<const std::uint8_t> bytes, FileReport& report) {
    message::ByteSource source(bytes);
    message::LoadedMessage loaded;
    SectionList found;
    const message::MessageOutcome outcome = message::LoadMessage(source, loaded, &found);
    report.message.emplace();
    report.sections = found.sections;
    const bool refused = outcome != message::MessageOutcome::kRead;
    report.reason = Reason(outcome, bytes, found, report);
    ReportCutSections(report, refused && report.findings.empty());
    if (loaded.file_header) report.message->type_name = Printable(loaded.file_header->TypeName());
    if (outcome != message::MessageOutcome::kShortFlags && loaded.flags) FillHead(loaded, bytes, found, report);
    const Section* rows = found.Find("rows");
    if (rows != nullptr && loaded.rows) {
        CheckRows(bytes, loaded, rows->offset, report);
        FillPalette(loaded, bytes, found, report);
    }
    if (const Section* tabs = found.Find("tab table")) CheckTabs(bytes, *tabs, loaded, report);
    if (report.depth == Depth::kEveryByte) CheckUnreadWords(bytes, found, report);
    if (refused) {
        report.message->delivery.reset();
    } else if (found.End() < bytes.size()) {
        ReportTrailingBytes(bytes.subspan(static_cast<std::size_t>(found.End())), report);
    }
    Conclude(report, refused);
}

namespace {

/// How a fault of a picture's record is reported.
struct PictureFault {
    Rule rule;
    const char* what;
    /// Offset and size of the field in the record.
    std::uint64_t at, size;
};

PictureFault PictureFaultOf(font::StoredGlyphFault fault) {
    switch (fault) {
        case font::StoredGlyphFault::kNone:
        case font::StoredGlyphFault::kHeadCutShort:
            break;
        case font::StoredGlyphFault::kNoPixels:
            return {Rule::kPictureSize, "the picture has a size without pixels", 8, 4};
        case font::StoredGlyphFault::kTooSmall:
            return {Rule::kPictureRecord, "the picture's record is too small for its pixels", 0, 4};
        case font::StoredGlyphFault::kPixelsCutShort:
            return {Rule::kPicturePixels, "the picture is cut short by the file's end", 0, 4};
    }
    return {Rule::kPictureHead, "the file ends before the picture's size", 0, font::kStoredGlyphHeadSize};
}

/// Checks the picture as the host does. @return whether it can be shown.
bool CheckPicture(const font::StoredGlyphHead& head, std::size_t present, FileReport& report) {
    const font::StoredGlyphFault fault = font::CheckStoredGlyph(head, present);
    if (fault != font::StoredGlyphFault::kNone) {
        const PictureFault found = PictureFaultOf(fault);
        const std::int64_t value = found.rule == Rule::kPictureRecord || found.rule == Rule::kPicturePixels
                                       ? std::int64_t{head.length}
                                       : Place::kNoValue;
        AddFinding(report, found.rule, {sizeof(tag_psos_header) + found.at, found.size, value}).what = found.what;
        return false;
    }
    if (head.width <= kLargestPictureSide && head.height <= kLargestPictureSide) return true;
    AddFinding(report, Rule::kPictureLimit, {sizeof(tag_psos_header) + 8, 4}).what =
        "the picture is larger than " + std::to_string(kLargestPictureSide) + " pixels each way, so it is not shown";
    return false;
}

}  // namespace

void InspectRgba(std::span<const std::uint8_t> bytes, FileReport& report) {
    message::ByteSource source(bytes);
    message::LoadedMessage loaded;
    SectionList found;
    const message::MessageOutcome outcome = message::LoadMessage(source, loaded, &found);
    report.sections = found.sections;
    if (report.depth == Depth::kEveryByte) CheckPsosHeader(bytes, report);
    if (outcome != message::MessageOutcome::kRgbaFile) {
        report.sections.clear();
        constexpr std::size_t kHead = sizeof(tag_psos_header), kLeast = kHead + sizeof(tag_msg_flags);
        report.reason =
            "cut short, " + Number(bytes.size()) + " of at least " + std::to_string(kLeast) + " bytes present";
        const bool has_header = bytes.size() >= kHead;
        const std::uint64_t start = has_header ? kHead : 0;
        AddFinding(report, Rule::kSectionNeeded,
                   {start, has_header ? kLeast - kHead : kHead, static_cast<std::int64_t>(bytes.size() - start)})
            .section = has_header ? "picture" : "Psos file header";
        Conclude(report, true);
        return;
    }
    const auto record = bytes.subspan(sizeof(tag_psos_header));
    const font::StoredGlyphHead head = font::ConvertStoredGlyphHead(record);
    report.picture = PictureReport{head.width, head.height};
    const std::uint64_t present = std::min<std::uint64_t>(record.size(), head.length);
    report.sections.push_back({"picture", sizeof(tag_psos_header), head.length, present, 1});
    const bool shown = CheckPicture(head, record.size(), report);
    if (report.depth == Depth::kEveryByte)
        CheckStoredGlyphUnread(record, head, {.offset = sizeof(tag_psos_header)}, RecordKind::kFile, report);
    if (shown && present < record.size()) {
        ReportTrailingBytes(record.subspan(static_cast<std::size_t>(present)), report);
    }
    Conclude(report, false);
}

}  // namespace zel::inspect
