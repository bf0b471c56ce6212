#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

#include "inspect/report.h"

/// What a file is, what it holds, and where it is broken, told without a host: by the readers that the import uses, and
/// by looking closer where those read on over damage.
namespace zel::inspect {

/// @param name  tells a name list from other text; the report carries it. A path is taken by its last part.
FileReport InspectBytes(std::span<const std::uint8_t> bytes, std::string_view name);

/// Reads the file whole.
/// @throws std::runtime_error with the reason, without the file's name: it isn't there, can't be read, is no plain
/// file, or is larger than kLargestFile.
FileReport InspectFile(const std::filesystem::path& file);

/// Far more than a message or a font takes; what is larger was given by mistake.
inline constexpr std::uintmax_t kLargestFile = 256U << 20;

}  // namespace zel::inspect
