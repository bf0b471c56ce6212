#pragma once

#include <cstdint>

#include "inspect/report.h"
#include "module/message/format/message_loader.h"

namespace zel::inspect {

/// Adds the rows and slots to a message's report. Reports damaged rows, broken chains, slots without a font, and codes
/// without a glyph.
/// @param loaded  with header and rows.
/// @param start   offset of the first row.
/// @param report  has a message; receives the defects.
void CheckRows(const message::LoadedMessage& loaded, std::uint64_t start, FileReport& report);

}  // namespace zel::inspect
