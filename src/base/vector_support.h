#pragma once

#include <cstddef>
#include <span>

#if defined(__SSE2__)
#include <immintrin.h>

/// Compile a function for instructions that the rest of the program isn't compiled for.
#define ZEL_AVX2 __attribute__((target("avx2,fma")))
#define ZEL_VBMI __attribute__((target("avx512bw,avx512vbmi,avx512vbmi2")))
#endif

namespace zel::base {

/// Instructions that a function needs beyond those that the program is compiled for. Code that uses them has a version
/// without them, which gives the same bytes.
enum class Instructions {
    kNone,
    /// AVX2 and the fused multiplication, which almost every processor with AVX2 has.
    kAvx2,
    /// AVX-512 with permutations of bytes and shifts of 16-bit words.
    kVbmi,
};

/// Whether the processor has these instructions.
inline bool Supports(Instructions needed) noexcept {
#if defined(__SSE2__)
    static const bool has_avx2 = __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0;
    static const bool has_vbmi = has_avx2 && __builtin_cpu_supports("avx512bw") != 0 &&
                                 __builtin_cpu_supports("avx512vbmi") != 0 &&
                                 __builtin_cpu_supports("avx512vbmi2") != 0;
    return needed == Instructions::kNone || (needed == Instructions::kAvx2 ? has_avx2 : has_vbmi);
#else
    return needed == Instructions::kNone;
#endif
}

/// The versions of a function that the processor can run, the fastest first.
/// @param paths  all versions, the fastest first. Their member `needs` gives the Instructions; the last one needs none.
template <class Path, std::size_t Size>
std::span<const Path> SupportedPaths(const Path (&paths)[Size]) noexcept {
    const std::span<const Path> all(paths);
    std::size_t first = 0;
    while (!Supports(all[first].needs)) ++first;
    return all.subspan(first);
}

inline bool HasAvx2() noexcept {
    return Supports(Instructions::kAvx2);
}
inline bool HasVbmi() noexcept {
    return Supports(Instructions::kVbmi);
}

}  // namespace zel::base
