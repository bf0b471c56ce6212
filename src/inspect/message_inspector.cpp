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

// The words of a section, as far as the file has them; the rest are zero.
std::uint16_t WordAt(std::span<const std::uint8_t> bytes, const Section* section, std::size_t offset) {
    if (section == nullptr) return 0;
    const std::uint64_t at = std::min<std::uint64_t>(section->offset + offset, bytes.size());
    return message::BigEndianCursor(bytes.subspan(static_cast<std::size_t>(at))).U16();
}

std::string CutShort(const Section* section) {
    if (section == nullptr) return "cut short";
    return "its " + section->name + " is cut short, " + Number(section->present) + " of " +
           Count(section->size, "byte") + " present";
}

std::string Reason(message::MessageOutcome outcome, std::span<const std::uint8_t> bytes, const SectionList& found) {
    const Section* palette = found.Find("palette");
    const Section* background = found.Find("background");
    const Section* tabs = found.Find("tab table");
    switch (outcome) {
        case message::MessageOutcome::kRead:
            return {};
        case message::MessageOutcome::kShortFileHeader:
            return CutShort(found.Find("Psos file header"));
        case message::MessageOutcome::kShortFlags:
            return CutShort(found.Find("section flags"));
        case message::MessageOutcome::kShortPalette:
            return palette != nullptr && palette->present == palette->size ? "its palette has no entries"
                                                                           : CutShort(palette);
        case message::MessageOutcome::kUnknownBackground:
            if (background != nullptr && background->present < 2) return CutShort(background);
            return "its background is of an unknown kind, " + Hex(WordAt(bytes, background, 0));
        case message::MessageOutcome::kShortBackground:
            return CutShort(background);
        case message::MessageOutcome::kTabVersionAbove2:
        case message::MessageOutcome::kTabVersionBelow2:
            if (tabs != nullptr && tabs->present < 2) return CutShort(tabs);
            return "its tab table is of version " + std::to_string(WordAt(bytes, tabs, 0)) + ", but only 2 is known";
        case message::MessageOutcome::kTooManyTabs:
            return "its tab table has " + Count((tabs->size - kTabHeadSize) / message::kTabRecordSize, "record") +
                   ", but at most " + std::to_string(message::kMaxTabs) + " are read";
        case message::MessageOutcome::kRgbaFile:
        case message::MessageOutcome::kUnsupportedType:
        case message::MessageOutcome::kUnsupportedNamedType:
            return "it is no message";
    }
    return {};
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
    report.verdict = defect.empty() ? Verdict::kWhole : Verdict::kReadable;
}

}  // namespace zel::inspect
