#pragma once

#include "platform/api.h"

/// The home system's random numbers. They have 15 bits, fewer than those of this system's library: a caller that draws
/// until a number falls into a small range would draw for minutes with the latter. There is one sequence for the
/// process, used on one thread. It is not suitable for secrets.
namespace zel::crt {

/// The largest number that rand returns.
inline constexpr int kRandMax = 0x7FFF;

/// Starts the sequence of `seed`.
ZEL_PLATFORM_API void srand(unsigned seed) noexcept;

/// The next number of the sequence, 0 to kRandMax. Without a call of srand, the sequence is that of 1.
ZEL_PLATFORM_API int rand() noexcept;

}  // namespace zel::crt
