#pragma once

#include "platform/api.h"

/// The runtime library's random numbers. They have 15 bits there, fewer than the standard library's have here, and a
/// caller that draws until a number falls into a small range would draw for minutes. One sequence for the process, used
/// on one thread; not fit for secrets.
namespace zel::crt {

inline constexpr int kRandMax = 0x7FFF;  ///< the largest number of rand.

/// Begins the sequence that belongs to `seed`.
ZEL_PLATFORM_API void srand(unsigned seed) noexcept;

/// The next number of the sequence, 0 to kRandMax; without a seed, of the one that belongs to 1.
ZEL_PLATFORM_API int rand() noexcept;

}  // namespace zel::crt
