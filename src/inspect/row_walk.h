#pragma once

#include <string>
#include <vector>

#include "module/contract/records/msg_header.h"
#include "module/contract/records/msg_row.h"

namespace zel::inspect {

/// The way that an import takes through the records of a row.
struct RowWalk {
    /// Every record in the order of the visits; one may occur twice, and be none of the row's own.
    std::vector<int> visits;
    /// The row's own records, each at its first visit.
    std::vector<int> order;
    /// The row's own records that aren't visited, ascending.
    std::vector<int> missed;
    /// Why a chain doesn't include every record; empty for one that does.
    std::string fault;
    /// The record with the link that is wrong, -1 for the row's first_char. Only with a fault.
    int fault_from = -1;
    /// That link.
    int fault_to = 0;
};
RowWalk WalkRow(const tag_msg_row& row);

/// The characters of a row that an import delivers.
struct RowDelivery {
    int characters = 0;
    /// The row's own records that it leaves out because of an earlier character without a font, by their visits.
    std::vector<int> rest;
};
/// @param header  names the fonts of the slots; all of them are present.
RowDelivery Deliver(const tag_msg_row& row, const RowWalk& walk, const tag_msg_header& header);

}  // namespace zel::inspect
