#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

namespace zel::samples {

/// Writes a file whole: under a name of its own beside it first, which then takes the file's place. Directories that
/// are missing are made.
/// @throws std::runtime_error with the file's name and the reason; the file is then as it was before.
void WriteWholeFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes);
void WriteWholeFile(const std::filesystem::path& file, std::string_view text);

}  // namespace zel::samples
