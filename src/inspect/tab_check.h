#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "inspect/report.h"
#include "module/message/format/message_loader.h"

namespace zel::inspect {

/// Bytes in front of a tab table's records.
inline constexpr std::size_t kTabHeadSize = 6;

/// Fills in the tab fields of a message's report, the rejected ones too, with why.
/// @param table  the section; no record of it is told when the table was refused.
void CheckTabs(std::span<const std::uint8_t> bytes, const Section& table, const message::LoadedMessage& loaded,
               FileReport& report);

}  // namespace zel::inspect
