#pragma once

#include "host/picture/pixel.h"

namespace zel::thumbnail {

/// The grounds of thumbnails: dark, but such that black, white and grey are visible.
inline constexpr picture::Rgba kGround{28, 31, 37, 255};
inline constexpr picture::Rgba kDarkSquare{66, 70, 78, 255};
inline constexpr picture::Rgba kLightSquare{86, 90, 98, 255};

}  // namespace zel::thumbnail
