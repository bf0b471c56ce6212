#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace zel::run {

// Why the module couldn't read a file, as text to follow the file's name.

/// For a path with more characters than the module accepts.
std::string TooLong(std::size_t length);

/// Why a file can't be opened; empty when it can.
/// @param kind         "message" or "font".
/// @param module_path  absolute, in the module's form.
std::string OpenError(const std::string& kind, const std::string& module_path);

/// The type in a file's first header; empty when the file ends within it or isn't a readable regular file.
/// @param path  this system's.
std::optional<std::uint32_t> FileType(const std::string& path);

/// Why a file that can be opened can't be read.
/// @param kind       "message" or "font": the expected type is kMessageFileType or kFontFileType.
/// @param file_type  from FileType, but no RGBA type when a message is expected.
std::string ContentError(const std::string& kind, std::optional<std::uint32_t> file_type);

}  // namespace zel::run
