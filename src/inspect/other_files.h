#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "inspect/report.h"

namespace zel::inspect {

/// Inspects a file whose first bytes make it no message, font or RGBA file: a name list, by its name or by what it
/// holds, other text, or something foreign.
/// @param name    last part of the file's path.
/// @param report  takes all but name, size and file type.
void InspectOther(std::span<const std::uint8_t> bytes, std::string_view name, FileReport& report);

}  // namespace zel::inspect
