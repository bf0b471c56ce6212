#pragma once

#include <cstdint>
#include <span>

#include "inspect/report.h"

namespace zel::inspect {

/// Inspects a message, type 702, which may end anywhere.
/// @param report  takes all but name, size, kind and file type.
void InspectMessage(std::span<const std::uint8_t> bytes, FileReport& report);

/// Inspects an RGBA file, type 714 or 717: a picture, of which the import reads nothing but the type.
void InspectRgba(std::span<const std::uint8_t> bytes, FileReport& report);

}  // namespace zel::inspect
