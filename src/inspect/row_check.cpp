#include "inspect/row_check.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "base/word_gap.h"
#include "inspect/findings.h"
#include "inspect/row_walk.h"
#include "inspect/unread_fields.h"
#include "inspect/words.h"
#include "module/contract/records/char_entry.h"

namespace zel::inspect {

namespace {

/// Offsets in a row's head.
constexpr std::uint64_t kFirstCharAt = 2, kCharCountAt = 4;
/// Offsets in a character.
constexpr std::uint64_t kCharFontAt = 4, kCodeAt = 4, kNextAt = 7;

constexpr UnreadField kHeadFields[] = {{"b0 bits 7, 6, 4 to 2", 0, 1, 0xDC}, {"b6, b7", 6, 2, 0xFFFF}};
constexpr UnreadField kCharacterFields[] = {
    {"b0 bits 7, 4 to 2", 0, 1, 0x9C}, {"b2 bits 7 to 5", 2, 1, 0xE0}, {"b6, b7 bits 7 to 6", 6, 2, 0xFFC0}};

Finding Collected(Rule rule, RecordKind record) {
    Finding finding;
    finding.rule = rule;
    finding.record = record;
    finding.section = "rows";
    return finding;
}

/// How often and in which rows a rule isn't kept.
struct Places {
    explicit Places(Rule rule) : finding(Collected(rule, RecordKind::kCharacter)) {}

    Finding finding;
    std::set<int> rows;

    void Add(const Place& place) {
        finding.Add(place);
        rows.insert(place.row);
    }
    std::string Rows() const {
        std::vector<std::string> names;
        for (const int row : rows) names.push_back(std::to_string(row));
        return (rows.size() == 1 ? "row " : "rows ") + Listed(names);
    }
    std::string Characters(std::string_view one, std::string_view many) const {
        return Count(finding.count, "character ", "characters ") + std::string(finding.count == 1 ? one : many);
    }
};

class RowChecker {
  public:
    RowChecker(std::span<const std::uint8_t> bytes, const message::LoadedMessage& loaded, FileReport& report)
        : m_bytes(bytes), m_loaded(loaded), m_report(report) {}

    void Check(std::uint64_t start);

  private:
    void CheckRow(int index, std::uint64_t offset);
    void CheckCharacters(const tag_msg_row& row, std::uint64_t offset, RowReport& out);
    void CheckWalk(const tag_msg_row& row, const RowWalk& walk, std::uint64_t offset, int present, int index);
    void CheckText(const tag_msg_row& row, const std::vector<int>& order, std::uint64_t offset, RowReport& out);
    void CheckUnread(std::uint64_t offset, int records, int index);
    void ReportMissing(int index);
    void ReportSlots();
    void ReportCodes();

    /// Adds a finding about a row with one place, and its line.
    Finding& AddToRow(Rule rule, int row, Place place, const std::string& what) {
        place.index = row;
        Finding& finding = AddFinding(m_report, rule, place, RecordKind::kRow);
        finding.section = "rows";
        finding.what = "row " + std::to_string(row) + what;
        return finding;
    }
    static std::uint64_t OffsetOf(std::uint64_t row, int record) {
        return row + sizeof(RowHead) + static_cast<std::uint64_t>(record) * sizeof(tag_msg_char);
    }

    const std::span<const std::uint8_t> m_bytes;
    const message::LoadedMessage& m_loaded;
    FileReport& m_report;
    std::uint64_t m_delivered = 0;
    std::map<int, int> m_slots;
    std::map<int, Places> m_wrong_slots;
    Places m_codes_without_glyph{Rule::kCodeRange};
    Places m_cut_codes{Rule::kCodeHighBits};
    Finding m_missed = Collected(Rule::kCharacterReached, RecordKind::kCharacter);
    Finding m_rest = Collected(Rule::kRestOfRow, RecordKind::kCharacter);
    Finding m_last_links = Collected(Rule::kLastLink, RecordKind::kCharacter);
    UnreadFields m_head_fields{kHeadFields, RecordKind::kRow, "rows"};
    UnreadFields m_character_fields{kCharacterFields, RecordKind::kCharacter, "rows"};
};

void RowChecker::Check(std::uint64_t start) {
    MessageReport& message = *m_report.message;
    message.row_count = m_loaded.header->RowCount();
    std::uint64_t offset = start;
    for (int index = 0; index < message.row_count; ++index) {
        if (offset >= m_report.size) {
            if (index != 0) ReportMissing(index);  // otherwise the whole section is missing, which is already reported
            break;
        }
        CheckRow(index, offset);
        const tag_msg_row& row = m_loaded.rows[static_cast<std::size_t>(index)];
        offset +=
            sizeof(RowHead) + (row.Empty() ? 0 : static_cast<std::uint64_t>(row.CharCount()) * sizeof(tag_msg_char));
    }
    ReportSlots();
    ReportCodes();
    for (Finding* const finding : {&m_missed, &m_rest, &m_last_links}) AddFinding(m_report, std::move(*finding));
    m_head_fields.Report(m_report);
    m_character_fields.Report(m_report);
    message.delivery = Delivery{message.row_count, m_delivered, m_loaded.tab_count};
}

void RowChecker::ReportMissing(int index) {
    const int last = m_report.message->row_count - 1;
    Finding& finding = AddToRow(Rule::kRowsPresent, index, {.offset = m_report.size, .value = last - index + 1}, "");
    finding.what = (index == last ? "row " + std::to_string(index) + " is"
                                  : "rows " + std::to_string(index) + " to " + std::to_string(last) + " are") +
                   " missing, and empty on import";
}

void RowChecker::CheckRow(int index, std::uint64_t offset) {
    const tag_msg_row& row = m_loaded.rows[static_cast<std::size_t>(index)];
    RowReport out;
    out.index = index;
    out.y = row.Y();
    out.top = row.Top();
    out.bottom = row.Bottom();
    out.empty = row.Empty();
    out.characters = row.Empty() ? 0 : row.CharCount();
    const std::uint64_t present = m_report.size - offset;
    if (present < sizeof(RowHead)) {
        AddToRow(Rule::kRowHeadPresent, index,
                 {.offset = offset, .size = sizeof(RowHead), .value = static_cast<std::int64_t>(present)},
                 ": its head is cut short");
    }
    if (row.Empty()) {
        if (row.CharCount() != 0) {
            AddToRow(Rule::kEmptyRowCount, index,
                     {.offset = offset + kCharCountAt, .size = 1, .value = row.CharCount()},
                     " is marked empty, but counts " + Count(static_cast<std::uint64_t>(row.CharCount()), "character"));
        }
        CheckUnread(offset, 0, index);
    } else {
        CheckCharacters(row, offset, out);
    }
    m_report.message->rows.push_back(std::move(out));
}

void RowChecker::CheckCharacters(const tag_msg_row& row, std::uint64_t offset, RowReport& out) {
    const std::uint64_t present = m_report.size - offset;
    const int records = static_cast<int>(
        std::min<std::uint64_t>((present - std::min<std::uint64_t>(present, sizeof(RowHead))) / sizeof(tag_msg_char),
                                static_cast<std::uint64_t>(row.CharCount())));
    RowWalk walk = WalkRow(row);
    if (records < row.CharCount() && present >= sizeof(RowHead)) {
        // The missing records are zeros, so the chain is meaningless.
        AddToRow(Rule::kRowPresent, out.index, {.offset = offset + kCharCountAt, .size = 1, .value = row.CharCount()},
                 ": cut short, " + std::to_string(records) + " of " +
                     Count(static_cast<std::uint64_t>(row.CharCount()), "character") + " present");
    } else if (!walk.fault.empty() && records == row.CharCount()) {
        const bool first = walk.fault_from < 0;
        Finding& chain =
            AddToRow(Rule::kChain, out.index,
                     {.offset = first ? offset + kFirstCharAt : OffsetOf(offset, walk.fault_from) + kNextAt,
                      .size = 1,
                      .value = walk.fault_to},
                     ": " + walk.fault);
        if (first) {
            chain.field = "first_char";
        } else {
            chain.record = RecordKind::kCharacter;
            chain.places.front().index = walk.fault_from;
            chain.places.front().row = out.index;
        }
    }
    std::erase_if(walk.order, [=](int record) { return record >= records; });
    CheckWalk(row, walk, offset, records, out.index);
    CheckText(row, walk.order, offset, out);
    CheckUnread(offset, records, out.index);
}

/// @param present  number of complete records in the file.
void RowChecker::CheckWalk(const tag_msg_row& row, const RowWalk& walk, std::uint64_t offset, int present, int index) {
    const auto add = [=](Finding& finding, int record) {
        if (record < present)
            finding.Add({OffsetOf(offset, record), sizeof(tag_msg_char), Place::kNoValue, record, index});
    };
    const RowDelivery delivery = Deliver(row, walk, *m_loaded.header);
    m_delivered += static_cast<std::uint64_t>(delivery.characters);
    for (const int record : walk.missed) add(m_missed, record);
    for (const int record : delivery.rest) add(m_rest, record);
    if (!walk.fault.empty() || walk.order.empty()) return;
    const int last = walk.order.back();
    if (const int next = row.chars[last].Next(); next != kChainEnd)
        m_last_links.Add({OffsetOf(offset, last) + kNextAt, 1, next, last, index});
}

void RowChecker::CheckText(const tag_msg_row& row, const std::vector<int>& order, std::uint64_t offset,
                           RowReport& out) {
    std::set<int> slots, colour_sets;
    const tag_msg_char* before = nullptr;
    for (const int record : order) {
        const tag_msg_char& character = row.chars[record];
        // As in the recorded text; before a new run the blank belongs to the last one.
        const bool is_blank = before == nullptr || before->Code() == ' ';
        if (!is_blank && base::IsWordGap(row.Bottom() - row.Top(), before->X(), character.X())) out.runs.back() += ' ';
        if (before == nullptr || before->Font() != character.Font() || before->ColourSet() != character.ColourSet()) {
            out.runs.emplace_back();
        }
        out.runs.back() += PrintableCode(character.Code());
        before = &character;
        const int slot = character.Font();
        slots.insert(slot);
        colour_sets.insert(character.ColourSet());
        ++m_slots[slot];
        const std::uint64_t at = OffsetOf(offset, record);
        if (slot >= kFontSlots || m_loaded.header->font_numbers[slot] == kNoFont) {
            const Rule rule = slot >= kFontSlots ? Rule::kSlotRange : Rule::kSlotFont;
            m_wrong_slots.try_emplace(slot, rule).first->second.Add({at + kCharFontAt, 1, slot, record, out.index});
        }
        // The low 8 bits are the index into a font's directory.
        const Place code{at + kCodeAt, 2, character.Code(), record, out.index};
        if ((character.Code() & 0xFF) >= kDirectoryEntries) {
            m_codes_without_glyph.Add(code);
        } else if (character.Code() > 0xFF) {
            m_cut_codes.Add(code);
        }
    }
    out.slots.assign(slots.begin(), slots.end());
    out.colour_sets.assign(colour_sets.begin(), colour_sets.end());
}

void RowChecker::CheckUnread(std::uint64_t offset, int records, int index) {
    if (m_report.depth != Depth::kEveryByte) return;
    const auto row = m_bytes.subspan(static_cast<std::size_t>(offset));
    m_head_fields.Check(row.first(std::min(row.size(), sizeof(RowHead))), {.offset = offset, .index = index});
    for (int record = 0; record < records; ++record) {
        const std::uint64_t at = OffsetOf(offset, record);
        m_character_fields.Check(m_bytes.subspan(static_cast<std::size_t>(at), sizeof(tag_msg_char)),
                                 {.offset = at, .index = record, .row = index});
    }
}

void RowChecker::ReportSlots() {
    MessageReport& message = *m_report.message;
    for (int slot = 0; slot < kFontSlots; ++slot) {
        const std::uint16_t number = m_loaded.header->font_numbers[slot];
        const bool used = m_slots.contains(slot);
        if (number == kNoFont && !used) continue;
        SlotReport& out = message.slots.emplace_back();
        out.slot = slot;
        if (number != kNoFont) out.number = number;
        if (used) out.characters = m_slots[slot];
    }
    for (auto& [slot, places] : m_wrong_slots) {
        const std::string start = places.Characters("uses", "use") + " slot " + std::to_string(slot);
        const std::string what =
            slot >= kFontSlots
                ? start + ", but the last one is " + std::to_string(kFontSlots - 1) + " (" + places.Rows() +
                      "): left out on import"
                : start + ", which names no font (" + places.Rows() + "): left out on import, with the rest of the row";
        AddFinding(m_report, std::move(places.finding), what);
    }
}

void RowChecker::ReportCodes() {
    if (m_codes_without_glyph.finding.count != 0) {
        const std::string what = m_codes_without_glyph.Characters("has a code", "have codes") +
                                 " that no font has, 192 to 255 (" + m_codes_without_glyph.Rows() + ")";
        AddFinding(m_report, std::move(m_codes_without_glyph.finding), what);
    }
    if (m_cut_codes.finding.count != 0) {
        const std::string what = m_cut_codes.Characters("has a code", "have codes") +
                                 " above 255, of which the low 8 bits count (" + m_cut_codes.Rows() + ")";
        AddFinding(m_report, std::move(m_cut_codes.finding), what);
    }
}

}  // namespace

void CheckRows(std::span<const std::uint8_t> bytes, const message::LoadedMessage& loaded, std::uint64_t start,
               FileReport& report) {
    RowChecker(bytes, loaded, report).Check(start);
}

}  // namespace zel::inspect
