#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace zel::library {

/// Contents of a file that recordings are made from, compressed.
struct PackedFile {
    /// Of the file's bytes: 64 hexadecimal digits, lower case.
    std::string sha256;
    /// Of the file, in bytes.
    std::uint64_t size = 0;
    /// A raw deflate stream.
    std::string stream;
};

/// Recordings share the files of their fonts.
using SharedFile = std::shared_ptr<const PackedFile>;

/// Bytes of the largest file that a library keeps.
inline constexpr std::uint64_t kLargestKeptFile = std::uint64_t{16} << 20;

SharedFile PackFile(std::string_view bytes);

/// The bytes of the file.
/// @throws std::runtime_error if they aren't those of its size and checksum.
std::string ContentsOf(const PackedFile& file);

}  // namespace zel::library
