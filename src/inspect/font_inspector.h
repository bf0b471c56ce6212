#pragma once

#include <cstdint>
#include <span>

#include "inspect/report.h"

namespace zel::inspect {

/// Inspects a font, type 500, which may be cut short anywhere.
/// @param report  receives everything except name, size, kind and file type.
void InspectFont(std::span<const std::uint8_t> bytes, FileReport& report);

}  // namespace zel::inspect
