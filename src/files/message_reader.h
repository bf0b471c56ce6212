#pragma once

#include <cstdint>
#include <span>

#include "files/description.h"
#include "files/message_writer.h"

namespace zel::files {

/// Reads a message file without loss: WriteMessage of the description gives the same bytes, whatever they are.
///
/// The sections are where an import reads them. Where an import stops (an empty palette, an unknown background, a tab
/// table of another version or of more than 200 records), the rest is `tail`. What the end of the file cuts off is
/// zero, as in an import, and `size` is set; rows, characters and records that begin beyond the end aren't in the
/// description. An optional field has a value only if it differs from the computed one.
/// @param file  needed during the call only.
Description<MessageFile> ReadMessage(std::span<const std::uint8_t> file);

}  // namespace zel::files
