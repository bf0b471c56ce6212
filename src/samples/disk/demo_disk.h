#pragma once

#include <filesystem>
#include <vector>

namespace zel::samples {

/// Writes the demonstration disk into a directory, which is created if it is missing: the messages to MESSAGES, the
/// fonts to MACHINE, and the two name lists. Existing files of these names are replaced. On one machine every run
/// writes the same bytes.
/// @return the files written, in the order of writing.
/// @throws std::runtime_error with the name of the file or typeface and the reason. Files already written remain.
std::vector<std::filesystem::path> WriteDemonstrationDisk(const std::filesystem::path& directory);

}  // namespace zel::samples
