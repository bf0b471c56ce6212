#include <algorithm>
#include <array>
#include <optional>

#include "base/vector_support.h"
#include "module/font/format/run_codes.h"

namespace zel::font {

namespace {

GlyphSize SizeOf(int max_width, int lines) noexcept {
    return {(max_width + 3) / 4 * 4, lines + 2};
}

#if defined(__SSE2__)

/// The sums of eight counts up to each of them.
ZEL_AVX2 inline __m256i RunningSum(__m256i counts) noexcept {
    counts = _mm256_add_epi32(counts, _mm256_slli_si256(counts, 4));
    counts = _mm256_add_epi32(counts, _mm256_slli_si256(counts, 8));
    const __m256i low_half = _mm256_permute2x128_si256(counts, counts, 0x08);
    return _mm256_add_epi32(counts, _mm256_shuffle_epi32(low_half, 0xFF));
}

/// The greatest of eight values, none of them below 0, up to each of them.
ZEL_AVX2 inline __m256i RunningMaximum(__m256i values) noexcept {
    values = _mm256_max_epi32(values, _mm256_slli_si256(values, 4));
    values = _mm256_max_epi32(values, _mm256_slli_si256(values, 8));
    const __m256i low_half = _mm256_permute2x128_si256(values, values, 0x08);
    return _mm256_max_epi32(values, _mm256_shuffle_epi32(low_half, 0xFF));
}

ZEL_AVX2 inline __m256i LastOf(__m256i values) noexcept {
    return _mm256_permutevar8x32_epi32(values, _mm256_set1_epi32(7));
}

ZEL_AVX2 inline int GreatestOf(__m256i values) noexcept {
    return _mm256_extract_epi32(RunningMaximum(values), 7);
}

/// Eight codes at a time, without a branch for the ends of lines: a line's width is the sum of all counts so far, less
/// what that sum was at the last end of line.
/// @return nothing for a glyph that may reach a limit, and for one of more codes than a glyph has.
ZEL_AVX2 std::optional<GlyphSize> MeasureAvx2(std::span<const std::uint8_t> codes) noexcept {
    constexpr std::size_t kMostCodes = 8192, kStep = 32;
    const __m256i zero = _mm256_setzero_si256(), end_of_line = _mm256_set1_epi32(3 << 24),
                  places = _mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7);
    __m256i sum = zero, sum_at_line_end = zero, widest = zero, lines = zero;
    bool ended = false;
    for (std::size_t at = 0; !ended; at += kStep) {
        if (at >= kMostCodes * 4) return std::nullopt;
        alignas(32) std::uint8_t last_codes[kStep] = {};
        const std::uint8_t* next = codes.data() + at;
        if (codes.size() - at < kStep) {
            std::copy_n(next, (codes.size() - at) / 4 * 4, last_codes);
            next = last_codes;
        }
        __m256i code = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(next));  // as in the file, big-endian
        const int ends = _mm256_movemask_ps(_mm256_castsi256_ps(_mm256_cmpeq_epi32(code, zero)));
        __m256i ends_line = _mm256_cmpeq_epi32(_mm256_and_si256(code, end_of_line), end_of_line);
        // Of a code that draws and moves on: 32 less the count field.
        const __m256i stays = _mm256_srai_epi32(_mm256_slli_epi32(code, 24), 31);
        __m256i count = _mm256_andnot_si256(_mm256_or_si256(stays, ends_line),
                                            _mm256_sub_epi32(_mm256_set1_epi32(32), _mm256_srli_epi32(code, 27)));
        if (ends != 0) {
            const __m256i before_end =
                _mm256_cmpgt_epi32(_mm256_set1_epi32(__builtin_ctz(static_cast<unsigned>(ends))), places);
            ends_line = _mm256_and_si256(ends_line, before_end);
            count = _mm256_and_si256(count, before_end);
            ended = true;
        }
        const __m256i sums = _mm256_add_epi32(RunningSum(count), sum);
        const __m256i base = _mm256_max_epi32(RunningMaximum(_mm256_and_si256(ends_line, sums)), sum_at_line_end);
        // At an end of line itself the base is its own sum already; the code before it has the line's width.
        widest = _mm256_max_epi32(widest, _mm256_sub_epi32(sums, base));
        lines = _mm256_sub_epi32(lines, ends_line);
        sum = LastOf(sums);
        sum_at_line_end = LastOf(base);
    }
    const int max_width = GreatestOf(widest);
    const int unfinished = GreatestOf(_mm256_sub_epi32(sum, sum_at_line_end)) != 0 ? 1 : 0;
    const int all_lines = _mm256_extract_epi32(RunningSum(lines), 7) + unfinished;
    // A line of so many runs would be at least so many pixels wide.
    if (max_width >= kMaxLineRuns || all_lines >= kMaxGlyphLines) return std::nullopt;
    return SizeOf(max_width, all_lines);
}

/// The values `count` places further up, with zeros below.
template <int count>
ZEL_VBMI inline __m512i MovedUp(__m512i values) noexcept {
    constexpr auto kPlaces = static_cast<__mmask16>(0xFFFF << count);
    return _mm512_maskz_alignr_epi32(kPlaces, values, values, 16 - count);
}

/// The greatest difference between neighbours among `count` + 1 values, which don't fall.
ZEL_VBMI inline int GreatestStep(const std::uint32_t* values, std::size_t count) noexcept {
    __m512i greatest = _mm512_setzero_si512();
    for (std::size_t at = 0; at < count; at += 16) {
        const auto held = static_cast<__mmask16>(count - at < 16 ? (1U << (count - at)) - 1 : 0xFFFF);
        const __m512i lower = _mm512_maskz_loadu_epi32(held, values + at),
                      upper = _mm512_maskz_loadu_epi32(held, values + at + 1);
        greatest = _mm512_mask_max_epi32(greatest, held, greatest, _mm512_sub_epi32(upper, lower));
    }
    alignas(64) std::int32_t all[16];
    _mm512_store_si512(all, greatest);
    return *std::max_element(all, all + 16);
}

/// Sixteen codes at a time: the sum of all counts is noted at each end of line, and the lines are measured at the end.
/// @return nothing for a glyph that may reach a limit, and for one of more codes than a glyph has.
ZEL_VBMI std::optional<GlyphSize> MeasureVbmi(std::span<const std::uint8_t> codes) noexcept {
    constexpr std::size_t kMostCodes = 8192, kStep = 16;
    const __m512i end_of_line = _mm512_set1_epi32(3 << 24), stay = _mm512_set1_epi32(0x80),
                  last = _mm512_set1_epi32(15);
    std::array<std::uint32_t, 1 + kMaxGlyphLines + 2 * kStep> ends;  // 0, then the sum at each end of line
    ends[0] = 0;
    std::size_t lines = 0;
    __m512i sum = _mm512_setzero_si512();
    bool ended = false;
    for (std::size_t first = 0; !ended; first += kStep, codes = codes.subspan(std::min(codes.size(), kStep * 4))) {
        if (first >= kMostCodes || lines > static_cast<std::size_t>(kMaxGlyphLines)) return std::nullopt;
        const std::size_t left = codes.size() / 4;  // beyond them the glyph ends
        const auto held = static_cast<__mmask16>(left < kStep ? (1U << left) - 1 : 0xFFFF);
        const __m512i code = _mm512_maskz_loadu_epi32(held, codes.data());  // as in the file, big-endian
        const unsigned glyph_ends = _mm512_testn_epi32_mask(code, code);
        const unsigned before_end = (glyph_ends & (0U - glyph_ends)) - 1U;
        const unsigned line_ends =
            _mm512_cmpeq_epi32_mask(_mm512_and_si512(code, end_of_line), end_of_line) & before_end;
        // Of a code that draws and moves on: 32 less the count field.
        const unsigned moves = _mm512_testn_epi32_mask(code, stay) & ~line_ends & before_end;
        __m512i sums = _mm512_maskz_sub_epi32(static_cast<__mmask16>(moves), _mm512_set1_epi32(32),
                                              _mm512_maskz_srli_epi32(static_cast<__mmask16>(moves), code, 27));
        sums = _mm512_add_epi32(sums, MovedUp<1>(sums));
        sums = _mm512_add_epi32(sums, MovedUp<2>(sums));
        sums = _mm512_add_epi32(sums, MovedUp<4>(sums));
        sums = _mm512_add_epi32(_mm512_add_epi32(sums, MovedUp<8>(sums)), sum);
        _mm512_storeu_si512(&ends[1 + lines], _mm512_maskz_compress_epi32(static_cast<__mmask16>(line_ends), sums));
        lines += static_cast<std::size_t>(__builtin_popcount(line_ends & 0xFFFF));
        sum = _mm512_maskz_permutexvar_epi32(0xFFFF, last, sums);
        ended = glyph_ends != 0;
    }
    ends[1 + lines] = static_cast<std::uint32_t>(_mm512_cvtsi512_si32(sum));
    const int max_width = GreatestStep(ends.data(), lines + 1);
    const int all_lines = static_cast<int>(lines) + (ends[1 + lines] != ends[lines] ? 1 : 0);
    // A line of so many runs would be at least so many pixels wide.
    if (max_width >= kMaxLineRuns || all_lines >= kMaxGlyphLines) return std::nullopt;
    return SizeOf(max_width, all_lines);
}

#endif

GlyphSize MeasureScalar(RunCodeReader codes) noexcept {
    int max_width = 0, line_width = 0, lines = 0, runs = 0;
    while (lines < kMaxGlyphLines && runs < kMaxLineRuns) {
        const RunCode code = codes.Next();
        if (code.EndsGlyph()) {
            if (runs != 0) {  // a last line without its end of line counts too
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

constexpr MeasurePath kPaths[] = {{"AVX-512",
                                   [](RunCodeReader codes) noexcept {
                                       const std::optional<GlyphSize> size = MeasureVbmi(codes.Rest());
                                       return size ? *size : MeasureScalar(codes);
                                   }},
                                  {"AVX2",
                                   [](RunCodeReader codes) noexcept {
                                       const std::optional<GlyphSize> size = MeasureAvx2(codes.Rest());
                                       return size ? *size : MeasureScalar(codes);
                                   }},
                                  {"scalar", MeasureScalar}};

#else

constexpr MeasurePath kPaths[] = {{"scalar", MeasureScalar}};

#endif

}  // namespace

std::span<const MeasurePath> MeasurePaths() noexcept {
    const std::span<const MeasurePath> paths(kPaths);
#if defined(__SSE2__)
    return paths.subspan(base::HasVbmi() ? 0 : base::HasAvx2() ? 1 : 2);
#else
    return paths;
#endif
}

GlyphSize MeasureRunCodes(RunCodeReader codes) noexcept {
    return MeasurePaths().front().measure(codes);
}

}  // namespace zel::font
