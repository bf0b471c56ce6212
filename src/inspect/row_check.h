#pragma once

#include <cstdint>

#include "inspect/report.h"
#include "module/message/format/message_loader.h"

namespace zel::inspect {

/// Fills in the rows and slots of a message's report, and reports damaged rows, broken chains, slots without a font and
/// codes without a glyph.
/// @param loaded  with header and rows.
/// @param start   offset of the first row.
/// @param report  with its message; takes the defects.
void CheckRows(const message::LoadedMessage& loaded, std::uint64_t start, FileReport& report);

}  // namespace zel::inspect
