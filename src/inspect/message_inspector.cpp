#include "inspect/message_inspector.h"

#include <algorithm>

#include "inspect/row_check.h"
#include "inspect/section_list.h"
#include "inspect/tab_check.h"
#include "inspect/words.h"
#include "module/font/format/stored_glyph.h"
#include "module/message/format/big_endian_cursor.h"
#include "module/message/format/convert_tab_field.h"
#include "module/message/format/message_loader.h"

namespace zel::inspect {

namespace {

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
};

std::string ExplainTabVersion(const Section& /*tabs*/, unsigned version) {
    return "its tab table is of version " + std::to_string(version) + ", but only 2 is known";
}

constexpr Refusal kRefusals[] = {
    {message::MessageOutcome::kShortFileHeader, "Psos file header", 0, nullptr},
    {message::MessageOutcome::kShortFlags, "section flags", 0, nullptr},
    {message::MessageOutcome::kShortPalette, "palette", 0,
     [](const Section&, unsigned) -> std::string { return "its palette has no entries"; }},
    {message::MessageOutcome::kUnknownBackground, "background", 2,
     [](const Section&, unsigned kind) { return "its background is of an unknown kind, " + Hex(kind); }},
    {message::MessageOutcome::kShortBackground, "background", 0, nullptr},
    {message::MessageOutcome::kTabVersionAbove2, "tab table", 2, ExplainTabVersion},
    {message::MessageOutcome::kTabVersionBelow2, "tab table", 2, ExplainTabVersion},
    {message::MessageOutcome::kTooManyTabs, "tab table", 1,
     [](const Section& tabs, unsigned) {
         return "its tab table has " + Count((tabs.size - kTabHeadSize) / message::kTabRecordSize, "record") +
                ", but at most " + std::to_string(message::kMaxTabs) + " are read";
     }},
};

std::string Reason(message::MessageOutcome outcome, std::span<const std::uint8_t> bytes, const SectionList& found) {
    if (outcome == message::MessageOutcome::kRead) return {};
    const auto* const refusal = std::ranges::find(kRefusals, outcome, &Refusal::outcome);
    if (refusal == std::end(kRefusals)) return "it is not a message";
    const Section* section = found.Find(refusal->section);
    if (section == nullptr) return "cut short";
    const std::uint64_t needed = refusal->needed != 0 ? refusal->needed : section->size;
    if (refusal->explain != nullptr && section->present >= needed) {
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
    if (words < kWholePalette) {
        report.defects.push_back("palette: " + Number(words) + " of 512 words; entries from " +
                                 std::to_string(words / 2) + " on are black");
    } else if (words > kWholePalette) {
        report.defects.push_back("palette: " + Number(words) + " words, but only 512 are read; what follows is read " +
                                 Count((words - kWholePalette) * 2, "byte") + " early");
    }
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
    }
    if (const Section* flash = found.Find("flash font")) {
        message.flash_font = Count(flash->size, "byte") + ", left out on import";
    }
}

}  // namespace

void InspectMessage(std::span<const std::uint8_t> bytes, FileReport& report) {
    message::ByteSource source(bytes);
    message::LoadedMessage loaded;
    SectionList found;
    const message::MessageOutcome outcome = message::LoadMessage(source, loaded, &found);
    report.message.emplace();
    report.sections = found.sections;
    report.reason = Reason(outcome, bytes, found);
    ReportCutSections(report);
    if (loaded.file_header) report.message->type_name = Printable(loaded.file_header->TypeName());
    if (outcome != message::MessageOutcome::kShortFlags && loaded.flags) FillHead(loaded, bytes, found, report);
    const Section* rows = found.Find("rows");
    if (rows != nullptr && loaded.rows) {
        CheckRows(loaded, rows->offset, report);
        FillPalette(loaded, bytes, found, report);
    }
    if (const Section* tabs = found.Find("tab table")) CheckTabs(bytes, *tabs, loaded, report);
    if (outcome == message::MessageOutcome::kRead && found.End() < bytes.size()) {
        ReportTrailingBytes(bytes.subspan(static_cast<std::size_t>(found.End())), report);
    }
    report.verdict = outcome != message::MessageOutcome::kRead ? Verdict::kBroken
                     : report.defects.empty()                  ? Verdict::kWhole
                                                               : Verdict::kReadable;
}

namespace {

std::string PictureDefect(font::StoredGlyphFault fault) {
    switch (fault) {
        case font::StoredGlyphFault::kNone:
            break;
        case font::StoredGlyphFault::kHeadCutShort:
            return "the file ends before the picture's size";
        case font::StoredGlyphFault::kNoPixels:
            return "the picture has a size without pixels";
        case font::StoredGlyphFault::kTooSmall:
            return "the picture's record is too small for its pixels";
        case font::StoredGlyphFault::kPixelsCutShort:
            return "the picture is cut short by the file's end";
    }
    return {};
}

}  // namespace

void InspectRgba(std::span<const std::uint8_t> bytes, FileReport& report) {
    message::ByteSource source(bytes);
    message::LoadedMessage loaded;
    SectionList found;
    const message::MessageOutcome outcome = message::LoadMessage(source, loaded, &found);
    if (outcome != message::MessageOutcome::kRgbaFile) {
        report.verdict = Verdict::kBroken;
        report.reason = "cut short, " + Number(bytes.size()) + " of at least 152 bytes present";
        return;
    }
    const auto record = bytes.subspan(sizeof(tag_psos_header));
    const font::StoredGlyphHead head = font::ConvertStoredGlyphHead(record);
    report.picture = PictureReport{head.width, head.height};
    const std::uint64_t present = std::min<std::uint64_t>(record.size(), head.length);
    report.sections = found.sections;
    report.sections.push_back({"picture", sizeof(tag_psos_header), head.length, present, 1});
    const std::string defect = PictureDefect(font::CheckStoredGlyph(head, record.size()));
    if (!defect.empty()) report.defects.push_back(defect);
    if (defect.empty() && present < record.size()) {
        ReportTrailingBytes(record.subspan(static_cast<std::size_t>(present)), report);
    }
    report.verdict = report.defects.empty() ? Verdict::kWhole : Verdict::kReadable;
}

}  // namespace zel::inspect
