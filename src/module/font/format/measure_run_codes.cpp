#include "module/font/format/measure_run_codes.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/vector_support.h"

namespace zel::font {

namespace {

GlyphSize SizeOf(int max_width, int lines) noexcept {
    return {(max_width + 3) / 4 * 4, lines + 2};
}

GlyphSize MeasureScalar(RunCodeReader codes) noexcept {
    int max_width = 0, line_width = 0, lines = 0, runs = 0;
    while (lines < kMaxGlyphLines && runs < kMaxLineRuns) {
        const RunCode code = codes.Next();
        if (code.EndsGlyph()) {
            if (runs != 0) {  // the last line counts even without an end of line
                ++lines;
                max_width = std::max(max_width, line_width);
            }
            break;
        }
        if (code.Operation() == RunOperation::kEndOfLine) {
            ++lines;
            runs = 0;
            max_width = std::max(max_width, line_width);
            line_width = 0;
        } else if (!code.Stay()) {
            line_width += code.Count();
            ++runs;
        }
    }
    return SizeOf(max_width, lines);
}

#if defined(__SSE2__)

// The vector code handles blocks of codes without a branch for the ends of lines: the width of a line is the running
// sum of all counts, minus that sum at the previous end of line. It leaves glyphs that may reach a limit, and very long
// ones, to the scalar code.

constexpr std::size_t kMaxVectorCodes = 8192;
constexpr std::size_t kCodeSize = sizeof(RunCode);

/// Nothing for a glyph that may reach a limit: a line of kMaxLineRuns runs is at least as many pixels wide.
std::optional<GlyphSize> SizeBelowLimits(int max_width, int lines) noexcept {
    if (max_width >= kMaxLineRuns || lines >= kMaxGlyphLines) return std::nullopt;
    return SizeOf(max_width, lines);
}

/// Eight run codes.
struct EightCodes {
    /// The pixels by which each code widens its line. 0 from the end of the glyph on.
    __m256i counts;
    /// All bits set for each code that ends a line before the end of the glyph.
    __m256i line_ends;
    bool end_glyph;
};

/// The next eight codes as in the file; the end of the encoding data is padded with zeros, which end the glyph.
ZEL_AVX2 inline __m256i LoadEight(std::span<const std::uint8_t> codes) noexcept {
    alignas(32) std::uint8_t padded[8 * kCodeSize] = {};
    const std::uint8_t* from = codes.data();
    if (codes.size() < sizeof padded) {
        std::copy_n(from, codes.size() / kCodeSize * kCodeSize, padded);
        from = padded;
    }
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
}

ZEL_AVX2 inline EightCodes DecodeEight(__m256i codes) noexcept {
    const __m256i end_of_line = _mm256_set1_epi32(3 << 24);
    const __m256i line_ends = _mm256_cmpeq_epi32(_mm256_and_si256(codes, end_of_line), end_of_line);
    const __m256i stays = _mm256_srai_epi32(_mm256_slli_epi32(codes, 24), 31);
    const __m256i counts = _mm256_andnot_si256(_mm256_or_si256(stays, line_ends),
                                               _mm256_sub_epi32(_mm256_set1_epi32(32), _mm256_srli_epi32(codes, 27)));
    const int glyph_ends = _mm256_movemask_ps(_mm256_castsi256_ps(_mm256_cmpeq_epi32(codes, _mm256_setzero_si256())));
    if (glyph_ends == 0) return {counts, line_ends, false};
    const __m256i before_end = _mm256_cmpgt_epi32(_mm256_set1_epi32(__builtin_ctz(static_cast<unsigned>(glyph_ends))),
                                                  _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7));
    return {_mm256_and_si256(counts, before_end), _mm256_and_si256(line_ends, before_end), true};
}

/// For each of eight counts, the sum of the counts up to it.
ZEL_AVX2 inline __m256i RunningSum(__m256i counts) noexcept {
    counts = _mm256_add_epi32(counts, _mm256_slli_si256(counts, 4));
    counts = _mm256_add_epi32(counts, _mm256_slli_si256(counts, 8));
    const __m256i low_half = _mm256_permute2x128_si256(counts, counts, 0x08);
    return _mm256_add_epi32(counts, _mm256_shuffle_epi32(low_half, 0xFF));
}

/// For each of eight values, none of them negative, the largest value up to it.
ZEL_AVX2 inline __m256i RunningMaximum(__m256i values) noexcept {
    values = _mm256_max_epi32(values, _mm256_slli_si256(values, 4));
    values = _mm256_max_epi32(values, _mm256_slli_si256(values, 8));
    const __m256i low_half = _mm256_permute2x128_si256(values, values, 0x08);
    return _mm256_max_epi32(values, _mm256_shuffle_epi32(low_half, 0xFF));
}

/// The last of eight values, in all places.
ZEL_AVX2 inline __m256i LastOf(__m256i values) noexcept {
    return _mm256_permutevar8x32_epi32(values, _mm256_set1_epi32(7));
}

ZEL_AVX2 inline int LargestOf(__m256i values) noexcept {
    return _mm256_extract_epi32(RunningMaximum(values), 7);
}

ZEL_AVX2 std::optional<GlyphSize> MeasureAvx2(std::span<const std::uint8_t> codes) noexcept {
    constexpr std::size_t kStep = 8;
    const __m256i zero = _mm256_setzero_si256();
    __m256i sum = zero, sum_at_line_end = zero, widest = zero, lines = zero;
    EightCodes block{zero, zero, false};
    for (std::size_t first = 0; !block.end_glyph; first += kStep) {
        if (first >= kMaxVectorCodes) return std::nullopt;
        block = DecodeEight(LoadEight(codes.subspan(std::min(codes.size(), first * kCodeSize))));
        const __m256i sums = _mm256_add_epi32(RunningSum(block.counts), sum);
        const __m256i base = _mm256_max_epi32(RunningMaximum(_mm256_and_si256(block.line_ends, sums)), sum_at_line_end);
        // At an end of line the difference is already 0; the code before it gives the width of the line.
        widest = _mm256_max_epi32(widest, _mm256_sub_epi32(sums, base));
        lines = _mm256_sub_epi32(lines, block.line_ends);
        sum = LastOf(sums);
        sum_at_line_end = LastOf(base);
    }
    const int unfinished = LargestOf(_mm256_sub_epi32(sum, sum_at_line_end)) != 0 ? 1 : 0;
    return SizeBelowLimits(LargestOf(widest), _mm256_extract_epi32(RunningSum(lines), 7) + unfinished);
}

/// Sixteen run codes.
struct SixteenCodes {
    /// The pixels by which each code widens its line. 0 from the end of the glyph on.
    __m512i counts;
    /// A bit for each code that ends a line before the end of the glyph.
    __mmask16 line_ends;
    bool end_glyph;
};

/// The next sixteen codes as in the file; the end of the encoding data is padded with zeros, which end the glyph.
ZEL_VBMI inline __m512i LoadSixteen(std::span<const std::uint8_t> codes) noexcept {
    const std::size_t left = codes.size() / kCodeSize;
    const auto present = static_cast<__mmask16>(left < 16 ? (1U << left) - 1 : 0xFFFF);
    return _mm512_maskz_loadu_epi32(present, codes.data());
}

ZEL_VBMI inline SixteenCodes DecodeSixteen(__m512i codes) noexcept {
    const __m512i end_of_line = _mm512_set1_epi32(3 << 24), stay = _mm512_set1_epi32(0x80);
    const unsigned glyph_ends = _mm512_testn_epi32_mask(codes, codes);
    const unsigned before_end = (glyph_ends & (0U - glyph_ends)) - 1U;
    const unsigned line_ends = _mm512_cmpeq_epi32_mask(_mm512_and_si512(codes, end_of_line), end_of_line) & before_end;
    const auto moves = static_cast<__mmask16>(_mm512_testn_epi32_mask(codes, stay) & ~line_ends & before_end);
    const __m512i counts =
        _mm512_maskz_sub_epi32(moves, _mm512_set1_epi32(32), _mm512_maskz_srli_epi32(moves, codes, 27));
    return {counts, static_cast<__mmask16>(line_ends), glyph_ends != 0};
}

/// Moves the values up by `count` places and fills with zeros.
template <int count>
ZEL_VBMI inline __m512i MovedUp(__m512i values) noexcept {
    constexpr auto kPlaces = static_cast<__mmask16>(0xFFFF << count);
    return _mm512_maskz_alignr_epi32(kPlaces, values, values, 16 - count);
}

/// For each of sixteen counts, the sum of the counts up to it.
ZEL_VBMI inline __m512i RunningSum(__m512i counts) noexcept {
    counts = _mm512_add_epi32(counts, MovedUp<1>(counts));
    counts = _mm512_add_epi32(counts, MovedUp<2>(counts));
    counts = _mm512_add_epi32(counts, MovedUp<4>(counts));
    return _mm512_add_epi32(counts, MovedUp<8>(counts));
}

/// The largest difference between neighbours in an ascending sequence of `count` + 1 values.
ZEL_VBMI inline int LargestStep(const std::uint32_t* values, std::size_t count) noexcept {
    __m512i largest = _mm512_setzero_si512();
    for (std::size_t first = 0; first < count; first += 16) {
        const auto present = static_cast<__mmask16>(count - first < 16 ? (1U << (count - first)) - 1 : 0xFFFF);
        const __m512i lower = _mm512_maskz_loadu_epi32(present, values + first),
                      upper = _mm512_maskz_loadu_epi32(present, values + first + 1);
        largest = _mm512_mask_max_epi32(largest, present, largest, _mm512_sub_epi32(upper, lower));
    }
    alignas(64) std::int32_t all[16];
    _mm512_store_si512(all, largest);
    return *std::max_element(all, all + 16);
}

ZEL_VBMI std::optional<GlyphSize> MeasureVbmi(std::span<const std::uint8_t> codes) noexcept {
    constexpr std::size_t kStep = 16;
    const __m512i last = _mm512_set1_epi32(15);
    // 0, then the sum of all counts at each end of line.
    std::array<std::uint32_t, 1 + kMaxGlyphLines + 2 * kStep> sums_at_line_ends;
    sums_at_line_ends[0] = 0;
    std::size_t lines = 0;
    __m512i sum = _mm512_setzero_si512();
    bool ended = false;
    for (std::size_t first = 0; !ended; first += kStep) {
        if (first >= kMaxVectorCodes || lines > static_cast<std::size_t>(kMaxGlyphLines)) return std::nullopt;
        const SixteenCodes block = DecodeSixteen(LoadSixteen(codes));
        codes = codes.subspan(std::min(codes.size(), kStep * kCodeSize));
        const __m512i sums = _mm512_add_epi32(RunningSum(block.counts), sum);
        _mm512_storeu_si512(&sums_at_line_ends[1 + lines], _mm512_maskz_compress_epi32(block.line_ends, sums));
        lines += static_cast<std::size_t>(__builtin_popcount(block.line_ends));
        sum = _mm512_maskz_permutexvar_epi32(0xFFFF, last, sums);
        ended = block.end_glyph;
    }
    sums_at_line_ends[1 + lines] = static_cast<std::uint32_t>(_mm512_cvtsi512_si32(sum));
    const int unfinished = sums_at_line_ends[1 + lines] != sums_at_line_ends[lines] ? 1 : 0;
    return SizeBelowLimits(LargestStep(sums_at_line_ends.data(), lines + 1), static_cast<int>(lines) + unfinished);
}

template <std::optional<GlyphSize> (*measure)(std::span<const std::uint8_t>) noexcept>
GlyphSize MeasureWith(RunCodeReader codes) noexcept {
    const std::optional<GlyphSize> size = measure(codes.Rest());
    return size ? *size : MeasureScalar(codes);
}

#endif

constexpr MeasurePath kPaths[] = {
#if defined(__SSE2__)
    {"AVX-512", base::Instructions::kVbmi, MeasureWith<MeasureVbmi>},
    {"AVX2", base::Instructions::kAvx2, MeasureWith<MeasureAvx2>},
#endif
    {"scalar", base::Instructions::kNone, MeasureScalar},
};

}  // namespace

std::span<const MeasurePath> MeasurePaths() noexcept {
    return base::SupportedPaths(kPaths);
}

GlyphSize MeasureRunCodes(RunCodeReader codes) noexcept {
    return MeasurePaths().front().measure(codes);
}

}  // namespace zel::font
