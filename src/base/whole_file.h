#pragma once

#include <filesystem>
#include <string_view>

namespace zel::base {

/// Writes a file that appears whole or not at all, also when the machine stops: the bytes are on the disk under another
/// name beside it before they take its place. A link of that name is replaced, not followed.
/// @throws std::runtime_error with the file's name and the reason; a file that was there before stays as it was.
void WriteWholeFile(const std::filesystem::path& file, std::string_view bytes);

}  // namespace zel::base
