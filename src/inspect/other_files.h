#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "inspect/report.h"

namespace zel::inspect {

/// Inspects a file that is not a message, font or RGBA file: a name list, recognised by name or content, other text, or
/// a foreign file.
/// @param name    last component of the file's path.
/// @param report  receives everything except name, size and file type.
void InspectOther(std::span<const std::uint8_t> bytes, std::string_view name, FileReport& report);

}  // namespace zel::inspect
