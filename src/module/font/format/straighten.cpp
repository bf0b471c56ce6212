#include "module/font/format/straighten.h"

#include <algorithm>
#include <cstring>

#include "base/vector_support.h"

namespace zel::font::straighten {

namespace {

const std::uint8_t* FromOf(const Rows& rows, std::size_t row) noexcept {
    return rows.from + static_cast<std::ptrdiff_t>(row) * rows.from_stride;
}
std::uint8_t* ToOf(const Rows& rows, std::size_t row) noexcept {
    return rows.to + row * rows.width * 4;
}

inline void ConvertScalar(const std::uint8_t* from, std::uint8_t* to, std::size_t count) noexcept {
    for (; count > 0; --count, from += 4, to += 4) {
        const unsigned alpha = from[0];
        for (std::size_t i = 1; i < 4; ++i) to[i - 1] = Colour(std::min<unsigned>(from[i], alpha), alpha);
        to[3] = static_cast<std::uint8_t>(alpha);
    }
}

#if defined(__SSE2__)

// 255 plus 2^-20 of it, for the same reason for which kFactors are rounded up. The division is the IEEE one, not an
// approximation, so that every processor gives the same result.
constexpr float kRaised255 = 255.0F + 255.0F / (1 << 20);
// Adding this to a float below 256 leaves the nearest integer in the lowest byte and kRoundBits in the others.
constexpr float kRound = 1 << 23;
constexpr int kRoundBits = 0x4B000000;
constexpr int kFirstByteOnly = ~0x7F7F7FFF;  // a shuffle index: 0x80 in all bytes but the first

inline void ConvertSse2(const std::uint8_t* from, std::uint8_t* to, std::size_t count) noexcept {
    const __m128i low_byte = _mm_set1_epi32(0xFF);
    for (; count >= 4; count -= 4, from += 16, to += 16) {
        const __m128i in = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
        const __m128i alpha = _mm_and_si128(in, low_byte);
        const __m128i twice = _mm_or_si128(alpha, _mm_slli_epi32(alpha, 8));
        const __m128i limited = _mm_min_epu8(in, _mm_or_si128(twice, _mm_slli_epi32(twice, 16)));
        const __m128 factor =
            _mm_div_ps(_mm_set1_ps(kRaised255), _mm_max_ps(_mm_cvtepi32_ps(alpha), _mm_set1_ps(1.0F)));
        const auto straight = [&](__m128i colour) {
            return _mm_castps_si128(_mm_add_ps(_mm_mul_ps(_mm_cvtepi32_ps(colour), factor), _mm_set1_ps(kRound)));
        };
        const __m128i blue = straight(_mm_and_si128(_mm_srli_epi32(limited, 8), low_byte)),
                      green = straight(_mm_and_si128(_mm_srli_epi32(limited, 16), low_byte)),
                      red = straight(_mm_srli_epi32(limited, 24));
        const __m128i top = _mm_xor_si128(_mm_slli_epi32(alpha, 24), _mm_set1_epi32(kRoundBits));
        const __m128i out =
            _mm_or_si128(_mm_xor_si128(blue, top), _mm_or_si128(_mm_slli_epi32(green, 8), _mm_slli_epi32(red, 16)));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), out);
    }
    ConvertScalar(from, to, count);
}

ZEL_AVX2 inline __m256i StraightenEight(__m256i in) noexcept {
    const __m256i low_byte = _mm256_set1_epi32(0xFF), rounding = _mm256_set1_epi32(kRoundBits);
    // Most pixels of a glyph are either empty or opaque.
    if (_mm256_testz_si256(in, low_byte)) return _mm256_setzero_si256();
    if (_mm256_testc_si256(in, low_byte)) return _mm256_or_si256(_mm256_srli_epi32(in, 8), _mm256_slli_epi32(in, 24));
    // Shuffle indexes of each pixel's bytes; an index of 0x80 gives zero.
    const __m256i pixel = _mm256_set1_epi64x(0x0404040400000000),
                  pick_alpha = _mm256_add_epi32(pixel, _mm256_set_epi64x(0x0808080808080808, 0, 0x0808080808080808, 0)),
                  pick_blue = _mm256_or_si256(pick_alpha, _mm256_set1_epi32(kFirstByteOnly + 1)),
                  pick_green = _mm256_or_si256(pick_alpha, _mm256_set1_epi32(kFirstByteOnly + 2));
    const __m256i alpha = _mm256_and_si256(in, low_byte);
    const __m256i limited = _mm256_min_epu8(in, _mm256_shuffle_epi8(in, pick_alpha));
    const __m256 factor =
        _mm256_div_ps(_mm256_set1_ps(kRaised255), _mm256_max_ps(_mm256_cvtepi32_ps(alpha), _mm256_set1_ps(1.0F)));
    const auto straight = [factor](__m256i colour) ZEL_AVX2 {
        return _mm256_castps_si256(_mm256_fmadd_ps(_mm256_cvtepi32_ps(colour), factor, _mm256_set1_ps(kRound)));
    };
    const __m256i blue = straight(_mm256_shuffle_epi8(limited, pick_blue)),
                  green = straight(_mm256_shuffle_epi8(limited, pick_green)),
                  red = straight(_mm256_srli_epi32(limited, 24));
    const __m256i top = _mm256_xor_si256(_mm256_slli_epi32(alpha, 24), rounding);
    return _mm256_or_si256(_mm256_xor_si256(blue, top),
                           _mm256_or_si256(_mm256_slli_epi32(green, 8), _mm256_slli_epi32(red, 16)));
}

ZEL_AVX2 void RowsAvx2(const Rows& rows) noexcept {
    // Local copies, since the compiler must assume that writing pixels may change `rows`.
    const std::size_t steps = rows.width / 8, rest = rows.width % 8;
    const std::ptrdiff_t from_stride = rows.from_stride;
    const __m256i of_rest =
        _mm256_cmpgt_epi32(_mm256_set1_epi32(static_cast<int>(rest)), _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7));
    const std::uint8_t* row = rows.from;
    std::uint8_t* to = rows.to;
    for (std::size_t left = rows.height; left > 0; --left) {
        const std::uint8_t* from = row;
        for (std::size_t step = steps; step > 0; --step, from += 32, to += 32) {
            const __m256i in = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), StraightenEight(in));
        }
        if (rest != 0) {
            const __m256i in = _mm256_maskload_epi32(reinterpret_cast<const int*>(from), of_rest);
            _mm256_maskstore_epi32(reinterpret_cast<int*>(to), of_rest, StraightenEight(in));
            to += rest * 4;
        }
        if (left > 1) row += from_stride;
    }
}

void RowsSse2(const Rows& rows) noexcept {
    for (std::size_t row = 0; row < rows.height; ++row) ConvertSse2(FromOf(rows, row), ToOf(rows, row), rows.width);
}

#endif

void RowsScalar(const Rows& rows) noexcept {
    for (std::size_t row = 0; row < rows.height; ++row) ConvertScalar(FromOf(rows, row), ToOf(rows, row), rows.width);
}

constexpr Path kPaths[] = {
#if defined(__SSE2__)
    {"AVX2", base::Instructions::kAvx2, RowsAvx2},
    {"SSE2", base::Instructions::kNone, RowsSse2},
#endif
    {"scalar", base::Instructions::kNone, RowsScalar},
};

}  // namespace

std::span<const Path> Paths() noexcept {
    return base::SupportedPaths(kPaths);
}

}  // namespace zel::font::straighten
