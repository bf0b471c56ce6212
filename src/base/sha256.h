#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zel::base {

/// SHA-256 as 64 hexadecimal digits, lower case.
std::string Sha256(std::string_view bytes);

/// SHA-256 of a file's bytes, as 64 hexadecimal digits. The file is read in pieces, whatever its size.
/// @throws std::runtime_error with the file's name and the reason.
std::string Sha256OfFile(const std::filesystem::path& file);

/// SHA-256 as its 32 bytes.
std::string Sha256Raw(std::string_view bytes);

}  // namespace zel::base
