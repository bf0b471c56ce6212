#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "host/picture/picture.h"

namespace zel::picture {

/// The largest width and height of an RGBA file's picture, pixels: more than any screen that one was made for. It
/// bounds the memory that a file can ask for.
inline constexpr int kLargestRgbaSide = 4096;

/// The picture of an RGBA file in its own size, or why there is none.
struct RgbaPicture {
    std::optional<Picture> picture;
    std::string trouble;  ///< words that follow the file's name; empty with a picture.
};

/// Reads the picture behind a file's 136-byte header, a stored glyph record. A record that doesn't hold all of its
/// pixels gives no picture; bytes behind the record aren't looked at.
/// @param file  of type 714 or 717.
RgbaPicture ConvertRgbaFile(std::span<const std::uint8_t> file);

/// @param path  this system's.
RgbaPicture ReadRgbaFile(const std::string& path);

}  // namespace zel::picture
