#include "inspect/tab_check.h"

#include <algorithm>
#include <string_view>

#include "base/field_text.h"
#include "inspect/words.h"
#include "module/message/format/convert_tab_field.h"

namespace zel::inspect {

namespace {

std::string WhyRejected(const tag_tab_field& tab, const message::LoadedMessage& loaded) {
    if (tab.Row() >= loaded.header->RowCount()) {
        return "it is in row " + std::to_string(tab.Row()) + ", but the last one is " +
               std::to_string(loaded.header->RowCount() - 1);
    }
    if (tab.tab_start >= tab.tab_end) {
        return "its start " + std::to_string(tab.tab_start + kXOffset) + " isn't left of its end " +
               std::to_string(tab.tab_end + kXOffset);
    }
    return {};
}

TabReport Describe(const tag_tab_field& tab, const message::LoadedMessage& loaded) {
    TabReport out;
    out.name = Printable(base::FieldText(tab.tab_name));
    out.start = tab.tab_start + kXOffset;
    out.end = tab.tab_end + kXOffset;
    out.row = tab.Row();
    if (tab.Font() < kFontSlots) out.slot = tab.Font();
    out.colour_set = tab.ColourSet();
    out.rejected = WhyRejected(tab, loaded);
    return out;
}

}  // namespace

void CheckTabs(std::span<const std::uint8_t> bytes, const Section& table, const message::LoadedMessage& loaded,
               FileReport& report) {
    if (loaded.tabs == nullptr || table.present <= kTabHeadSize) return;
    auto records = bytes.subspan(static_cast<std::size_t>(table.offset) + kTabHeadSize,
                                 static_cast<std::size_t>(table.present) - kTabHeadSize);
    std::vector<TabReport>& tabs = report.message->tabs;
    while (!records.empty()) {
        const auto record = records.first(std::min<std::size_t>(message::kTabRecordSize, records.size()));
        records = records.subspan(record.size());
        tabs.push_back(Describe(message::ConvertTabRecord(record), loaded));
        if (tabs.back().rejected.empty()) continue;
        report.defects.push_back("tab field " + std::to_string(tabs.size() - 1) + ": left out on import, " +
                                 tabs.back().rejected);
    }
}

}  // namespace zel::inspect
