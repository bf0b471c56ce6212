#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace zel::base {

/// SHA-256 as 64 hexadecimal digits, lower case.
std::string Sha256(std::string_view bytes);

/// Largest file that Sha256OfFile reads unless it is asked for more, in bytes: more than a message, a font or the
/// largest RGBA picture has.
inline constexpr std::uint64_t kLargestHashedFile = 80U << 20;

/// SHA-256 of a regular file's bytes, as 64 hexadecimal digits. The file is read in pieces.
/// @param stop  asked before each piece whether to give up; may be empty.
/// @param largest  bytes of the largest file that is read.
/// @throws std::runtime_error  with the file's name and the reason: it can't be read, is no regular file or larger than
///                             `largest`, or `stop` returned true.
std::string Sha256OfFile(const std::filesystem::path& file, const std::function<bool()>& stop = {},
                         std::uint64_t largest = kLargestHashedFile);

/// SHA-256 as its 32 bytes.
std::string Sha256Raw(std::string_view bytes);

}  // namespace zel::base
