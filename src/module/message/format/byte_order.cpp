#include "module/message/format/byte_order.h"

#include <cstddef>

#include "base/instructions.h"
#include "base/vector_support.h"

namespace zel::message {

namespace {

#if defined(__SSE2__)

// Swaps eight values at a time.
// @return the number of values swapped; fewer than eight are left.
ZEL_AVX2 std::size_t SwapEights(std::span<std::uint32_t> values) noexcept {
    const __m256i reversed =
        _mm256_broadcastsi128_si256(_mm_setr_epi8(3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12));
    std::size_t done = 0;
    for (; values.size() - done >= 8; done += 8) {
        auto* const eight = reinterpret_cast<__m256i*>(values.data() + done);
        _mm256_storeu_si256(eight, _mm256_shuffle_epi8(_mm256_loadu_si256(eight), reversed));
    }
    return done;
}

#endif

}  // namespace

void SwapLongs(std::span<std::uint32_t> values) noexcept {
#if defined(__SSE2__)
    if (base::Supports(base::Instructions::kAvx2)) values = values.subspan(SwapEights(values));
#endif
    for (std::uint32_t& value : values) value = SwapLong(value);
}

}  // namespace zel::message
