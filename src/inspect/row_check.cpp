#include "inspect/row_check.h"

#include <algorithm>
#include <bitset>
#include <map>
#include <set>
#include <span>

#include "base/word_gap.h"
#include "inspect/words.h"
#include "module/contract/records/char_entry.h"

namespace zel::inspect {

namespace {

/// The characters of a row in reading order.
struct Chain {
    std::vector<int> order;
    /// Empty for a chain that includes every record.
    std::string fault;
};

/// Why a chain ends early.
/// @param from  the last record read; -1 for none.
/// @param to    the record that would be next.
/// @param read  number of records read, of `count`.
std::string ChainFault(int from, int to, int read, int count) {
    const std::string so_far =
        " after " + std::to_string(read) + " of " + Count(static_cast<std::uint64_t>(count), "character");
    const std::string beyond_last = ", but the last one is " + std::to_string(count - 1);
    const std::string fault =
        to < count        ? "the chain returns to record " + std::to_string(to) + so_far
        : from < 0        ? "the chain starts at record " + std::to_string(to) + beyond_last
        : to == kChainEnd ? "the chain ends at record " + std::to_string(from) + so_far
                          : "record " + std::to_string(from) + " leads to record " + std::to_string(to) + beyond_last;
    return fault + "; " + Count(static_cast<std::uint64_t>(count - read), "record isn't", "records aren't") +
           " reached";
}

Chain FollowChain(const tag_msg_row& row) {
    const int count = row.CharCount();
    Chain chain;
    std::bitset<kChainEnd + 1> seen;
    int from = -1, to = row.FirstChar();
    for (int read = 0; read < count; ++read) {
        const auto next = static_cast<std::size_t>(to);
        if (to >= count || seen[next]) {
            chain.fault = ChainFault(from, to, read, count);
            break;
        }
        seen.set(next);
        chain.order.push_back(to);
        from = to;
        to = row.chars[next].Next();
    }
    return chain;
}

/// How often and in which rows something occurs.
struct Places {
    int times = 0;
    std::set<int> rows;

    void Add(int row) {
        ++times;
        rows.insert(row);
    }
    std::string Rows() const {
        std::vector<std::string> names;
        for (const int row : rows) names.push_back(std::to_string(row));
        return (rows.size() == 1 ? "row " : "rows ") + Listed(names);
    }
    std::string Characters(std::string_view one, std::string_view many) const {
        return Count(static_cast<std::uint64_t>(times), "character ", "characters ") +
               std::string(times == 1 ? one : many);
    }
};

class RowChecker {
  public:
    RowChecker(const message::LoadedMessage& loaded, FileReport& report) : m_loaded(loaded), m_report(report) {}

    void Check(std::uint64_t start);

  private:
    void CheckRow(int index, std::uint64_t present);
    void CheckText(const tag_msg_row& row, const std::vector<int>& order, RowReport& out);
    void ReportSlots();
    void ReportCodes();
    void Defect(int row, const std::string& what) {
        m_report.defects.push_back("row " + std::to_string(row) + ": " + what);
    }

    const message::LoadedMessage& m_loaded;
    FileReport& m_report;
    std::map<int, Places> m_slots;
    Places m_codes_without_glyph;
    Places m_cut_codes;
};

void RowChecker::Check(std::uint64_t start) {
    MessageReport& message = *m_report.message;
    message.row_count = m_loaded.header->RowCount();
    std::uint64_t offset = start;
    for (int index = 0; index < message.row_count; ++index) {
        if (offset >= m_report.size) {
            if (index == 0) break;  // the whole section is missing, which is already reported
            const int missing = message.row_count - index;
            m_report.defects.push_back((missing == 1 ? "row " + std::to_string(index) + " is"
                                                     : "rows " + std::to_string(index) + " to " +
                                                           std::to_string(message.row_count - 1) + " are") +
                                       " missing, and empty on import");
            break;
        }
        CheckRow(index, m_report.size - offset);
        const tag_msg_row& row = m_loaded.rows[static_cast<std::size_t>(index)];
        offset +=
            sizeof(RowHead) + (row.Empty() ? 0 : static_cast<std::uint64_t>(row.CharCount()) * sizeof(tag_msg_char));
    }
    ReportSlots();
    ReportCodes();
}

void RowChecker::CheckRow(int index, std::uint64_t present) {
    const tag_msg_row& row = m_loaded.rows[static_cast<std::size_t>(index)];
    RowReport out;
    out.index = index;
    out.y = row.Y();
    out.top = row.Top();
    out.bottom = row.Bottom();
    out.empty = row.Empty();
    out.characters = row.Empty() ? 0 : row.CharCount();
    if (present < sizeof(RowHead)) {
        Defect(index, "its head is cut short");
    } else if (row.Empty()) {
        if (row.CharCount() != 0) {
            m_report.remarks.push_back("row " + std::to_string(index) + " is marked empty, but counts " +
                                       Count(static_cast<std::uint64_t>(row.CharCount()), "character"));
        }
    } else {
        const int present_records = static_cast<int>(std::min<std::uint64_t>(
            (present - sizeof(RowHead)) / sizeof(tag_msg_char), static_cast<std::uint64_t>(row.CharCount())));
        Chain chain = FollowChain(row);
        if (present_records < row.CharCount()) {
            // The missing records are zeros, so the chain is meaningless.
            Defect(index, "cut short, " + std::to_string(present_records) + " of " +
                              Count(static_cast<std::uint64_t>(row.CharCount()), "character") + " present");
            std::erase_if(chain.order, [=](int record) { return record >= present_records; });
        } else if (!chain.fault.empty()) {
            Defect(index, chain.fault);
        }
        CheckText(row, chain.order, out);
    }
    m_report.message->rows.push_back(std::move(out));
}

void RowChecker::CheckText(const tag_msg_row& row, const std::vector<int>& order, RowReport& out) {
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
        slots.insert(character.Font());
        colour_sets.insert(character.ColourSet());
        m_slots[character.Font()].Add(out.index);
        // The low 8 bits are the index into a font's directory.
        if ((character.Code() & 0xFF) >= kDirectoryEntries) {
            m_codes_without_glyph.Add(out.index);
        } else if (character.Code() > 0xFF) {
            m_cut_codes.Add(out.index);
        }
    }
    out.slots.assign(slots.begin(), slots.end());
    out.colour_sets.assign(colour_sets.begin(), colour_sets.end());
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
        if (used) out.characters = m_slots[slot].times;
    }
    for (const auto& [slot, places] : m_slots) {
        if (slot >= kFontSlots) {
            m_report.defects.push_back(places.Characters("uses", "use") + " slot " + std::to_string(slot) +
                                       ", but the last one is " + std::to_string(kFontSlots - 1) + " (" +
                                       places.Rows() + "): left out on import");
        } else if (m_loaded.header->font_numbers[slot] == kNoFont) {
            m_report.defects.push_back(places.Characters("uses", "use") + " slot " + std::to_string(slot) +
                                       ", which names no font (" + places.Rows() +
                                       "): left out on import, with the rest of the row");
        }
    }
}

void RowChecker::ReportCodes() {
    if (m_codes_without_glyph.times != 0) {
        m_report.defects.push_back(m_codes_without_glyph.Characters("has a code", "have codes") +
                                   " that no font has, 192 to 255 (" + m_codes_without_glyph.Rows() + ")");
    }
    if (m_cut_codes.times != 0) {
        m_report.remarks.push_back(m_cut_codes.Characters("has a code", "have codes") +
                                   " above 255, of which the low 8 bits count (" + m_cut_codes.Rows() + ")");
    }
}

}  // namespace

void CheckRows(const message::LoadedMessage& loaded, std::uint64_t start, FileReport& report) {
    RowChecker(loaded, report).Check(start);
}

}  // namespace zel::inspect
