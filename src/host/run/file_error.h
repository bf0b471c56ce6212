#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace zel::run {

// Why the module couldn't read a file, as text to follow the file's name.

/// For a path with more characters than the module accepts.
std::string TooLong(std::size_t length);

/// Why the files in a directory can't be found, as text to follow the directory's name; empty when they can.
/// @param path  this system's.
std::string DirectoryError(const std::string& path);

/// Why a file can't be opened; empty when it can.
/// @param kind         "message" or "font".
/// @param module_path  absolute, in the module's form.
std::string OpenError(const std::string& kind, const std::string& module_path);

/// The type in a file's first header; empty when the file ends within it or isn't a readable regular file.
/// @param path  this system's.
std::optional<std::uint32_t> FileType(const std::string& path);

/// Why a file that can be opened can't be read: its kind, as far as it is recognised, or that it is damaged.
/// @param kind  "message" or "font": the expected type is kMessageFileType or an RGBA type, or kFontFileType.
/// @param path  this system's.
std::string ContentError(const std::string& kind, const std::string& path);

}  // namespace zel::run
