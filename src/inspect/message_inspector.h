#pragma once

#include <cstdint>
#include <span>

#include "inspect/report.h"

namespace zel::inspect {

/// Inspects a message, type 702, which may be cut short anywhere.
/// @param report  receives everything except name, size, kind and file type.
void InspectMessage(std::span<const std::uint8_t> bytes, FileReport& report);

/// Inspects an RGBA file, type 714 or 717: a picture, of which the module reads only the type.
void InspectRgba(std::span<const std::uint8_t> bytes, FileReport& report);

}  // namespace zel::inspect
