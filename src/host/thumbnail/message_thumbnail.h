#pragma once

#include <filesystem>
#include <optional>

#include "host/picture/picture.h"

namespace zel::thumbnail {

/// The message as the module imports it, in its own size and with its alpha. Nothing if the module would not read this
/// file for its name, or the picture would be empty, as without the fonts.
std::optional<picture::Picture> ImportedPicture(const std::filesystem::path& file);

}  // namespace zel::thumbnail
