#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace zel::run {

// Why the module couldn't read a file, in words that follow the file's name.

/// A path of so many characters is longer than the module takes.
std::string TooLong(std::size_t length);

/// Why a file can't be opened; empty when it can.
/// @param kind         "message" or "font".
/// @param module_path  absolute, in the module's form.
std::string OpenTrouble(const std::string& kind, const std::string& module_path);

/// The type in a file's first header; nothing when the file ends within it.
/// @param path  this system's.
std::optional<std::uint32_t> FileType(const std::string& path);

/// Why a file that opens isn't read as what it should be.
/// @param kind       "message" or "font", whose type is kMessageFileType or kFontFileType.
/// @param file_type  as FileType gave it, but no RGBA type when a message is asked for.
std::string ContentTrouble(const std::string& kind, std::optional<std::uint32_t> file_type);

}  // namespace zel::run
