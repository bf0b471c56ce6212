#pragma once

#include <chrono>

namespace zel::desktop {

/// The longest time that the user-interface thread waits for another program that has locked the library.
inline constexpr auto kLibraryWait = std::chrono::milliseconds(400);

}  // namespace zel::desktop
