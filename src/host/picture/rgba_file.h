#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "host/picture/picture.h"

namespace zel::picture {

/// Largest width and height in pixels of an RGBA file's picture, larger than any screen that such files are made for.
/// Limits the memory that a file can request.
inline constexpr int kLargestRgbaSide = 4096;

/// The picture of an RGBA file in its own size, or the reason why there is none.
struct RgbaPicture {
    std::optional<Picture> picture;
    /// Text that follows the file's name in an error message; empty with a picture.
    std::string error;
};

/// Reads the picture after a file's 136-byte header, a stored glyph record. A record that doesn't contain all of its
/// pixels gives no picture; bytes after the record are ignored.
/// @param file  of type 714 or 717; any other type gives no picture.
RgbaPicture ConvertRgbaFile(std::span<const std::uint8_t> file);

/// Reads the picture of a file.
/// @param path  in this system's form.
RgbaPicture ReadRgbaFile(const std::string& path);

}  // namespace zel::picture
