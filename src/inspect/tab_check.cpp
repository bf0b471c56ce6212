#include "inspect/tab_check.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/field_text.h"
#include "inspect/findings.h"
#include "inspect/unread_fields.h"
#include "inspect/words.h"
#include "module/message/format/big_endian_cursor.h"
#include "module/message/format/convert_tab_field.h"

namespace zel::inspect {

namespace {

/// Offsets in the table.
constexpr std::uint64_t kWordsAt = 2, kThirdWordAt = 4;
/// Offsets in a record.
constexpr std::size_t kNameAt = 5, kRowAt = 22, kTabFontAt = 23;

constexpr UnreadField kTableFields[] = {{"word at 4", kThirdWordAt, 2, 0xFFFF}};
constexpr UnreadField kTabFields[] = {{"tab_byte", 4, 1, 0xFF},
                                      {"tab_a", 22, 2, 0x03C0},
                                      {"tab_colour bit 3", 23, 1, 0x01},
                                      {"b24 bits 4 to 0", 24, 1, 0x1F},
                                      {"b25", 25, 1, 0xFF}};

/// Reports a field that the import leaves out.
/// @return why.
std::string CheckRejected(const tag_tab_field& tab, const message::LoadedMessage& loaded, std::uint64_t offset,
                          std::size_t index, FileReport& report) {
    const auto add = [&](Rule rule, Place place, std::string why) {
        place.index = static_cast<std::int32_t>(index);
        Finding& finding = AddFinding(report, rule, place, RecordKind::kTabField);
        finding.section = "tab table";
        finding.what = "tab field " + std::to_string(index) + ": left out on import, " + why;
        return why;
    };
    if (tab.Row() >= loaded.header->RowCount()) {
        return add(Rule::kTabRow, {.offset = offset + kRowAt, .size = 1, .value = tab.Row()},
                   "it is in row " + std::to_string(tab.Row()) + ", but the last one is " +
                       std::to_string(loaded.header->RowCount() - 1));
    }
    if (tab.tab_start >= tab.tab_end) {
        return add(Rule::kTabEnds, {.offset = offset, .size = 4, .value = tab.tab_start},
                   "its start " + std::to_string(tab.tab_start + kXOffset) + " isn't left of its end " +
                       std::to_string(tab.tab_end + kXOffset));
    }
    return {};
}

TabReport Describe(const tag_tab_field& tab) {
    TabReport out;
    out.name = Printable(base::FieldText(tab.tab_name));
    out.start = tab.tab_start + kXOffset;
    out.end = tab.tab_end + kXOffset;
    out.row = tab.Row();
    if (tab.Font() < kFontSlots) out.slot = tab.Font();
    out.colour_set = tab.ColourSet();
    return out;
}

Finding Collected(Rule rule) {
    Finding finding;
    finding.rule = rule;
    finding.record = RecordKind::kTabField;
    finding.section = "tab table";
    return finding;
}

bool NamesFont(const tag_tab_field& tab, const tag_msg_header& header) {
    return tab.Font() < kFontSlots && header.font_numbers[tab.Font()] != kNoFont;
}

void CheckTable(std::span<const std::uint8_t> bytes, const Section& table, FileReport& report) {
    const auto head = bytes.subspan(static_cast<std::size_t>(table.offset));
    const std::uint16_t words = message::BigEndianCursor(head.subspan(kWordsAt)).U16();
    constexpr int kRecordWords = message::kTabRecordSize / 2;
    if (words % kRecordWords != 0) {
        AddFinding(report, Rule::kTabRest, {.offset = table.offset + kWordsAt, .size = 2, .value = words}).section =
            "tab table";
    }
    if (report.depth != Depth::kEveryByte) return;
    UnreadFields fields(kTableFields, RecordKind::kFile, "tab table");
    fields.Check(head, {.offset = table.offset});
    fields.Report(report);
}

}  // namespace

void CheckTabs(std::span<const std::uint8_t> bytes, const Section& table, const message::LoadedMessage& loaded,
               FileReport& report) {
    if (table.present >= kTabHeadSize) CheckTable(bytes, table, report);
    if (loaded.tabs == nullptr) return;
    std::vector<TabReport>& tabs = report.message->tabs;
    Finding slots = Collected(Rule::kTabSlot), missing = Collected(Rule::kTabPresent);
    UnreadFields unread(kTabFields, RecordKind::kTabField, "tab table");
    const std::uint64_t end = table.offset + table.size;
    for (std::uint64_t offset = table.offset + kTabHeadSize; offset < end; offset += message::kTabRecordSize) {
        const auto index = static_cast<std::int32_t>((offset - table.offset - kTabHeadSize) / message::kTabRecordSize);
        const auto record = bytes.subspan(static_cast<std::size_t>(std::min<std::uint64_t>(offset, bytes.size())));
        if (record.empty()) {
            missing.Add({.offset = offset, .size = message::kTabRecordSize, .index = index});
            continue;
        }
        const auto present = record.first(std::min<std::size_t>(message::kTabRecordSize, record.size()));
        const tag_tab_field tab = message::ConvertTabRecord(present);
        tabs.push_back(Describe(tab));
        tabs.back().rejected = CheckRejected(tab, loaded, offset, tabs.size() - 1, report);
        if (tabs.back().rejected.empty() && !NamesFont(tab, *loaded.header))
            slots.Add({.offset = offset + kTabFontAt, .size = 1, .value = tab.Font(), .index = index});
        if (report.depth != Depth::kEveryByte) continue;
        unread.Check(present, {.offset = offset, .index = index});
        if (present.size() > kNameAt) {
            CheckTextRest(present.subspan(kNameAt, std::min(kTabNameSize, present.size() - kNameAt)),
                          {.record = RecordKind::kTabField, .section = "tab table", .field = "tab_name"},
                          {.offset = offset + kNameAt, .index = index}, report);
        }
    }
    AddFinding(report, std::move(missing));
    AddFinding(report, std::move(slots));
    unread.Report(report);
}

}  // namespace zel::inspect
