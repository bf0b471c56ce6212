#pragma once

#include <cstdint>
#include <span>

#include "inspect/report.h"
#include "module/message/format/message_loader.h"

namespace zel::inspect {

/// Adds the rows and slots to a message's report. Reports damaged rows, broken chains, slots without a font, and codes
/// without a glyph.
/// @param bytes   the file.
/// @param loaded  with header and rows.
/// @param start   offset of the first row.
/// @param report  has a message; receives the findings, and the delivery of rows and characters.
void CheckRows(std::span<const std::uint8_t> bytes, const message::LoadedMessage& loaded, std::uint64_t start,
               FileReport& report);

}  // namespace zel::inspect
