#pragma once

// What the processor offers beyond the instructions that the module is compiled for. Code that uses it has a twin
// without, which gives the same bytes.

#if defined(__SSE2__)
#include <immintrin.h>

namespace zel::base {

#define ZEL_AVX2 __attribute__((target("avx2,fma")))
#define ZEL_VBMI __attribute__((target("avx512bw,avx512vbmi,avx512vbmi2")))

/// With the fused multiplication that comes with it in all but a few processors.
inline bool HasAvx2() noexcept {
    static const bool has = __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0;
    return has;
}

/// AVX-512 with its permutations of bytes and its turns of words.
inline bool HasVbmi() noexcept {
    static const bool has = HasAvx2() && __builtin_cpu_supports("avx512bw") != 0 &&
                            __builtin_cpu_supports("avx512vbmi") != 0 && __builtin_cpu_supports("avx512vbmi2") != 0;
    return has;
}
#endif

}  // namespace zel::base
