#include "host/picture/bgra_row.h"

#include <cstddef>
#include <cstring>

#include "base/vector_support.h"

namespace zel::picture {

namespace {

void BlendSingly(const std::uint8_t* source, std::span<Rgba> pixels) noexcept {
    for (Rgba& pixel : pixels) {
        if (source[3] != 0) pixel = Over({source[2], source[1], source[0], source[3]}, pixel);
        source += 4;
    }
}

/// Four pixels, which the compiler processes in one vector register where there is one. The alpha is the top byte of
/// each.
using Four [[gnu::vector_size(16)]] = std::uint32_t;
constexpr std::size_t kFour = 4;
constexpr std::uint32_t kAlphaBits = 0xFF000000, kRedAndBlue = 0x00FF00FF;

Four LoadFour(const void* pixels) noexcept {
    Four four;
    std::memcpy(&four, pixels, sizeof four);
    return four;
}

bool AllClear(Four pixels) noexcept {
    const Four alpha = pixels & kAlphaBits;
    std::uint64_t halves[2];
    std::memcpy(halves, &alpha, sizeof alpha);
    return (halves[0] | halves[1]) == 0;
}

/// Most of a glyph is drawn on clear pixels and only copied, with red and blue swapped. A branch for each pixel would
/// be mispredicted too often.
void BlendByFour(const std::uint8_t* source, std::span<Rgba> pixels) noexcept {
    for (; pixels.size() >= kFour; pixels = pixels.subspan(kFour), source += 4 * kFour) {
        const Four above = LoadFour(source);
        const Four below = LoadFour(pixels.data());
        if (!AllClear(below)) {
            BlendSingly(source, pixels.first(kFour));
            continue;
        }
        const Four swapped = above >> 16 | above << 16;
        const Four straight = (above & ~kRedAndBlue) | (swapped & kRedAndBlue);
        const Four is_clear = (above & kAlphaBits) == 0;
        const Four blended = (straight & ~is_clear) | (below & is_clear);
        std::memcpy(static_cast<void*>(pixels.data()), &blended, sizeof blended);
    }
    BlendSingly(source, pixels);
}

#if defined(__SSE2__)

constexpr std::size_t kEight = 8;

/// The bytes of a channel of eight pixels, as numbers.
template <int shift>
ZEL_AVX2 inline __m256 Channel(__m256i pixels) noexcept {
    return _mm256_cvtepi32_ps(_mm256_and_si256(_mm256_srli_epi32(pixels, shift), _mm256_set1_epi32(0xFF)));
}

/// Over for eight pixels. The numerators are whole and below 2^24, so that floats hold them. A quotient that is not
/// whole is at least 1 / 65025 below the next whole number, which is more than half the distance of two floats below
/// 256: the division never rounds up to it.
ZEL_AVX2 inline __m256i OverEight(__m256i above, __m256i below) noexcept {
    const __m256 full = _mm256_set1_ps(255), above_alpha = Channel<24>(above);
    const __m256 above_share = _mm256_mul_ps(above_alpha, full);
    const __m256 below_share = _mm256_mul_ps(Channel<24>(below), _mm256_sub_ps(full, above_alpha));
    const __m256 both = _mm256_add_ps(above_share, below_share);
    const __m256 half = _mm256_cvtepi32_ps(_mm256_srli_epi32(_mm256_cvttps_epi32(both), 1));
    const __m256 divisor = _mm256_max_ps(both, _mm256_set1_ps(1));
    const auto mix = [&](__m256 a, __m256 b) __attribute__((target("avx2,fma"))) {
        const __m256 sum = _mm256_fmadd_ps(a, above_share, _mm256_fmadd_ps(b, below_share, half));
        return _mm256_cvttps_epi32(_mm256_div_ps(sum, divisor));
    };
    const __m256i red = mix(Channel<0>(above), Channel<0>(below)), green = mix(Channel<8>(above), Channel<8>(below)),
                  blue = mix(Channel<16>(above), Channel<16>(below)),
                  alpha = _mm256_cvttps_epi32(_mm256_div_ps(_mm256_add_ps(both, _mm256_set1_ps(127)), full));
    return _mm256_or_si256(_mm256_or_si256(red, _mm256_slli_epi32(green, 8)),
                           _mm256_or_si256(_mm256_slli_epi32(blue, 16), _mm256_slli_epi32(alpha, 24)));
}

/// @param above  not all clear; in the order of `below`.
ZEL_AVX2 inline __m256i BlendEight(__m256i above, __m256i below) noexcept {
    const __m256i alpha_bits = _mm256_set1_epi32(static_cast<int>(kAlphaBits));
    const __m256i is_clear = _mm256_cmpeq_epi32(_mm256_and_si256(above, alpha_bits), _mm256_setzero_si256());
    const bool is_copied = _mm256_testz_si256(below, alpha_bits) != 0 || _mm256_testc_si256(above, alpha_bits) != 0;
    return _mm256_blendv_epi8(is_copied ? above : OverEight(above, below), below, is_clear);
}

ZEL_AVX2 inline __m256i RedFirst(__m256i bgra) noexcept {
    return _mm256_shuffle_epi8(bgra, _mm256_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15,  //
                                                      2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15));
}

ZEL_AVX2 void BlendByEight(const std::uint8_t* source, std::span<Rgba> pixels) noexcept {
    const __m256i alpha_bits = _mm256_set1_epi32(static_cast<int>(kAlphaBits));
    auto* to = reinterpret_cast<std::uint8_t*>(pixels.data());
    std::size_t left = pixels.size();
    for (; left >= kEight; left -= kEight, source += 4 * kEight, to += 4 * kEight) {
        const __m256i above = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(source));
        if (_mm256_testz_si256(above, alpha_bits) != 0) continue;
        auto* const place = reinterpret_cast<__m256i*>(to);
        _mm256_storeu_si256(place, BlendEight(RedFirst(above), _mm256_loadu_si256(place)));
    }
    if (left == 0) return;
    // The pixels beyond the end count as clear.
    const __m256i present =
        _mm256_cmpgt_epi32(_mm256_set1_epi32(static_cast<int>(left)), _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7));
    const __m256i above = _mm256_maskload_epi32(reinterpret_cast<const int*>(source), present);
    auto* const place = reinterpret_cast<int*>(to);
    const __m256i below = _mm256_maskload_epi32(place, present);
    _mm256_maskstore_epi32(place, present, BlendEight(RedFirst(above), below));
}

#endif

constexpr BgraRowPath kPaths[] = {
#if defined(__SSE2__)
    {"AVX2", base::Instructions::kAvx2, BlendByEight},
#endif
    {"scalar", base::Instructions::kNone, BlendByFour},
};

}  // namespace

std::span<const BgraRowPath> BgraRowPaths() noexcept {
    return base::SupportedPaths(kPaths);
}

}  // namespace zel::picture
