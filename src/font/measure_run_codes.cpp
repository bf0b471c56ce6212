#include <algorithm>
#include <optional>

#include "font/run_codes.h"
#include "message/vector_support.h"

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

#endif

}  // namespace

GlyphSize MeasureRunCodesScalar(RunCodeReader codes) noexcept {
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

GlyphSize MeasureRunCodes(RunCodeReader codes) noexcept {
#if defined(__SSE2__)
    if (HasAvx2()) {
        if (const std::optional<GlyphSize> size = MeasureAvx2(codes.Rest())) return *size;
    }
#endif
    return MeasureRunCodesScalar(codes);
}
