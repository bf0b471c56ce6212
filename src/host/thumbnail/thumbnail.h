#pragma once

#include <filesystem>

#include "host/picture/picture.h"

/// Small opaque pictures of messages and fonts, for file managers.
namespace zel::thumbnail {

inline constexpr int kLargestSide = 1024;

/// A thumbnail of a message or a font, whatever the file's name. A message that is found under its own name, with its
/// fonts, is shown as it is imported; any other by the places of its characters. Damaged files are shown as far as they
/// can be read. Reads the settings of nobody.
/// @param side  width of the picture, and its height if it is higher than wide; in pixels, 1 to
///              kLargestSide.
/// @throws std::runtime_error with the reason, without the file's name: unreadable, or neither a message nor a font;
///         std::bad_alloc.
picture::Picture MakeThumbnail(const std::filesystem::path& file, int side);

}  // namespace zel::thumbnail
