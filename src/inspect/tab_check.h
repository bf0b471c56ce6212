#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "inspect/report.h"
#include "module/message/format/message_loader.h"

namespace zel::inspect {

/// Bytes before a tab table's records.
inline constexpr std::size_t kTabHeadSize = 6;

/// Adds the tab fields to a message's report, and reports the rejected and the missing ones.
/// @param table  the section. Nothing is added if the reader refused it.
void CheckTabs(std::span<const std::uint8_t> bytes, const Section& table, const message::LoadedMessage& loaded,
               FileReport& report);

}  // namespace zel::inspect
