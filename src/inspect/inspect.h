#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

#include "inspect/report.h"

/// Reports what a file is, what it contains and where it is damaged, without a host. Uses the import's own readers, and
/// further checks where those tolerate damage.
namespace zel::inspect {

/// Inspects a file's bytes.
/// @param name  copied to the report; its last component helps to recognise a name list.
/// @param depth  bounds what is reported beside the faults.
FileReport InspectBytes(std::span<const std::uint8_t> bytes, std::string_view name, Depth depth = Depth::kFaults);

/// Reads and inspects a file.
/// @throws std::runtime_error with the reason, without the file's name: it is missing, unreadable, not a regular file,
///         or larger than kLargestFile.
FileReport InspectFile(const std::filesystem::path& file, Depth depth = Depth::kFaults);

/// In bytes; more than a message, a font or the largest RGBA picture has, so a larger file was named by mistake.
inline constexpr std::uintmax_t kLargestFile = 80U << 20;

}  // namespace zel::inspect
