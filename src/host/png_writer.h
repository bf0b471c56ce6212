#pragma once

#include <filesystem>

#include "host/picture.h"

/// Writes a picture as PNG with its pixels' shape: the screen is 4:3, so a pixel is 10:11 as wide as high in 486 lines
/// and 12:11 in 576. The file appears whole or not at all.
/// @throws std::runtime_error with the file's name and the reason; a file that was there before stays as it was.
void WritePng(const std::filesystem::path& file, const Picture& picture);
