#include "inspect/row_walk.h"

#include <algorithm>
#include <bitset>

#include "inspect/words.h"

namespace zel::inspect {

namespace {

using Records = std::bitset<kChainEnd + 1>;

/// Why a chain doesn't include every record.
/// @param read  number of records read before the wrong link.
std::string FaultText(const RowWalk& walk, int read, int count) {
    const int from = walk.fault_from, to = walk.fault_to;
    const std::string so_far =
        " after " + std::to_string(read) + " of " + Count(static_cast<std::uint64_t>(count), "character");
    const std::string beyond_last = ", but the last one is " + std::to_string(count - 1);
    const std::string fault =
        to < count        ? "the chain returns to record " + std::to_string(to) + so_far
        : from < 0        ? "the chain starts at record " + std::to_string(to) + beyond_last
        : to == kChainEnd ? "the chain ends at record " + std::to_string(from) + so_far
                          : "record " + std::to_string(from) + " leads to record " + std::to_string(to) + beyond_last;
    return fault + "; " + Count(walk.missed.size(), "record isn't", "records aren't") + " reached";
}

}  // namespace

RowWalk WalkRow(const tag_msg_row& row) {
    const int count = row.CharCount();
    RowWalk walk;
    Records seen;
    int from = -1, to = row.FirstChar(), read_before_fault = -1;
    for (int step = 0; step < count; ++step) {
        const auto record = static_cast<std::size_t>(to);
        if (read_before_fault < 0 && (to >= count || seen[record])) {
            read_before_fault = step;
            walk.fault_from = from;
            walk.fault_to = to;
        }
        if (to == kChainEnd) break;
        walk.visits.push_back(to);
        if (to < count && !seen[record]) walk.order.push_back(to);
        seen.set(record);
        from = to;
        to = row.chars[record].Next();
    }
    if (read_before_fault < 0) return walk;
    for (int record = 0; record < count; ++record) {
        if (!seen[static_cast<std::size_t>(record)]) walk.missed.push_back(record);
    }
    walk.fault = FaultText(walk, read_before_fault, count);
    return walk;
}

RowDelivery Deliver(const tag_msg_row& row, const RowWalk& walk, const tag_msg_header& header) {
    RowDelivery delivery;
    Records passed;
    std::size_t visit = 0;
    for (; visit < walk.visits.size(); ++visit) {
        const int record = walk.visits[visit], slot = row.chars[record].Font();
        passed.set(static_cast<std::size_t>(record));
        if (slot >= kFontSlots) continue;
        if (header.font_numbers[slot] == kNoFont) break;
        ++delivery.characters;
    }
    for (++visit; visit < walk.visits.size(); ++visit) {
        const int record = walk.visits[visit];
        if (record >= row.CharCount() || passed[static_cast<std::size_t>(record)]) continue;
        passed.set(static_cast<std::size_t>(record));
        delivery.rest.push_back(record);
    }
    return delivery;
}

}  // namespace zel::inspect
