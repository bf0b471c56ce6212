#pragma once

#include <cstddef>
#include <span>

namespace zel::base {

/// Instructions that a function needs beyond those that the program is compiled for. Such a function has a twin without
/// them, which gives the same bytes.
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

/// The implementations of a function that the processor supports, the fastest first.
/// @param paths  all implementations, the fastest first. A member `needs` names the instructions of each; the last one
///               needs none.
template <class Path, std::size_t Size>
std::span<const Path> SupportedPaths(const Path (&paths)[Size]) noexcept {
    std::size_t first = 0;
    while (!Supports(paths[first].needs)) ++first;
    return std::span<const Path>(paths).subspan(first);
}

}  // namespace zel::base
