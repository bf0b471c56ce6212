#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string_view>

namespace zel::samples {

/// Writes a file that appears whole or not at all. Missing directories are created.
/// @throws std::runtime_error with the file's name and the reason; a file that was there before is then unchanged.
void WriteWholeFile(const std::filesystem::path& file, std::span<const std::uint8_t> bytes);
void WriteWholeFile(const std::filesystem::path& file, std::string_view text);

}  // namespace zel::samples
