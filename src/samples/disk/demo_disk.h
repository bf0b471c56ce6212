#pragma once

#include <filesystem>
#include <vector>

namespace zel::samples {

/// Writes the demonstration disk into a directory, which is made if it is missing: the messages to MESSAGES, the fonts
/// to MACHINE and the two name lists beside them. Files of the same names are replaced, each of them whole. On one
/// machine every run writes the same bytes.
/// @return the files written, in the order of writing.
/// @throws std::runtime_error that names the file or the typeface and says why; the files written before it stay.
std::vector<std::filesystem::path> WriteDemonstrationDisk(const std::filesystem::path& directory);

}  // namespace zel::samples
