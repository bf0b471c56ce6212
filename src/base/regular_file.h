#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "base/file_descriptor.h"

/// Reading of regular files. A pipe, a socket or a device could block the reader or never end, so it is refused before
/// it is opened.
namespace zel::base {

/// What a path or its link leads to, if that exists and isn't a regular file: "a directory", "a pipe", "a socket" or "a
/// device". Otherwise empty.
std::string OtherFileKind(const std::filesystem::path& file);

/// Opens a regular file for reading.
/// @throws std::runtime_error  with the reason, without the file's name; std::system_error if the system refuses.
FileDescriptor OpenRegularFile(const std::filesystem::path& file);

/// Reads a regular file up to `most` bytes, and not beyond the size that it had when it was opened.
/// @throws as OpenRegularFile.
std::vector<std::uint8_t> ReadFileBytes(const std::filesystem::path& file, std::size_t most);

}  // namespace zel::base
