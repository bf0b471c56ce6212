#pragma once

// Functions for instructions that the rest of the program isn't compiled for; see base/instructions.h.

#if defined(__SSE2__)
#include <immintrin.h>

/// Compiles a function for base::Instructions::kAvx2.
#define ZEL_AVX2 __attribute__((target("avx2,fma")))
/// Compiles a function for base::Instructions::kVbmi.
#define ZEL_VBMI __attribute__((target("avx512bw,avx512vbmi,avx512vbmi2")))
#endif
