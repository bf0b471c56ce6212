#pragma once

#include <chrono>

namespace zel::desktop {

/// How long the windows stand still at most for another program that holds the library.
inline constexpr auto kPatience = std::chrono::milliseconds(400);

}  // namespace zel::desktop
