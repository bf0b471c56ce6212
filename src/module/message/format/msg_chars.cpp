#include "module/message/format/msg_chars.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "base/vector_support.h"

namespace zel::message::msg_chars {

// A record consists of four words. A word loaded from the file has its two bytes exchanged, which is a rotation by 8
// bits. In words 0 to 2 the memory form has the 6-bit field below the 10-bit field and the file form above it, which is
// a rotation by 6 bits; together this is a rotation by 2 bits to the right. Word 3 has its 10-bit field below, which
// gives a rotation by 2 bits to the left. The bits within the 6-bit fields of words 0 and 1 then have to be reordered.

namespace {

// The flags of word 0, place_flag and chain_end among them: the highest bit in the file is the lowest in memory.
constexpr unsigned ReverseFlags(unsigned six) noexcept {
    return (six & 1) << 5 | (six & 2) << 3 | (six & 4) << 1 | (six >> 1 & 4) | (six >> 3 & 2) | six >> 5;
}
// The 6-bit field of word 1: bits 5-4 move to bits 1-0, bit 3 to bit 2, bits 2-0 (colour_set) to 5-3.
constexpr unsigned ReorderColourSet(unsigned six) noexcept {
    return six >> 4 | (six >> 1 & 4) | (six & 7) << 3;
}
static_assert(ReverseFlags(0x20) == 0x01 && ReverseFlags(0x08) == 0x04 && ReorderColourSet(0x20) == 0x02 &&
              ReorderColourSet(0x04) == 0x20);

/// The values of `reorder` for `count` 6-bit fields: 0, `step`, 2 * `step` and so on.
template <std::size_t count>
constexpr auto TableOf(unsigned (*reorder)(unsigned), unsigned step) noexcept {
    std::array<std::uint8_t, count> table{};
    for (unsigned n = 0; n < count; ++n) table[n] = static_cast<std::uint8_t>(reorder(n * step & 0x3F));
    return table;
}

void ConvertScalar(const std::uint8_t* from, tag_msg_char* to, std::size_t count) noexcept {
    static constexpr auto kFlags = TableOf<64>(ReverseFlags, 1), kSet = TableOf<64>(ReorderColourSet, 1);
    for (; count > 0; --count, from += sizeof *to, ++to) {
        std::uint64_t file = 0;
        std::memcpy(&file, from, sizeof file);
        const std::uint64_t rotated = (file >> 2 & 0x00003FFF3FFF3FFF) | (file << 14 & 0x0000C000C000C000) |
                                      (file << 2 & 0xFFFC000000000000) | (file >> 14 & 0x0003000000000000);
        const std::uint64_t memory =
            (rotated & 0xFFFFFFFFFFC0FFC0) | kFlags[rotated & 0x3F] | std::uint64_t{kSet[rotated >> 16 & 0x3F]} << 16;
        *to = std::bit_cast<tag_msg_char>(memory);
    }
}

#if defined(__SSE2__)

ZEL_AVX2 inline __m256i BothHalves(const std::array<std::uint8_t, 16>& table) noexcept {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(table.data())));
}

// Converts four records. Tables of 16 entries map the low and the high bits of a 6-bit field separately; index 0, which
// all other bytes have, gives 0.
ZEL_AVX2 inline void ConvertFour(const std::uint8_t* from, tag_msg_char* to) noexcept {
    static constexpr auto kLowFlags = TableOf<16>(ReverseFlags, 1), kHighFlags = TableOf<16>(ReverseFlags, 16),
                          kLowSet = TableOf<16>(ReorderColourSet, 1);
    const __m256i file = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
    const __m256i factors = _mm256_set1_epi64x(0x0004400040004000);  // the rotations as multiplications
    const __m256i rotated = _mm256_or_si256(_mm256_mullo_epi16(file, factors), _mm256_mulhi_epu16(file, factors));
    const __m256i high = _mm256_srli_epi64(rotated, 4);
    const __m256i low_flags =
                      _mm256_shuffle_epi8(BothHalves(kLowFlags), _mm256_and_si256(rotated, _mm256_set1_epi64x(0x0F))),
                  high_flags =
                      _mm256_shuffle_epi8(BothHalves(kHighFlags), _mm256_and_si256(high, _mm256_set1_epi64x(0x03))),
                  low_set =
                      _mm256_shuffle_epi8(BothHalves(kLowSet), _mm256_and_si256(rotated, _mm256_set1_epi64x(0x0F0000))),
                  high_set = _mm256_and_si256(high, _mm256_set1_epi64x(0x030000)),
                  others = _mm256_and_si256(rotated, _mm256_set1_epi64x(static_cast<long long>(0xFFFFFFFFFFC0FFC0)));
    const __m256i flags = _mm256_or_si256(low_flags, high_flags), set = _mm256_or_si256(low_set, high_set);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), _mm256_or_si256(_mm256_or_si256(flags, set), others));
}

ZEL_AVX2 void ConvertAvx2(const std::uint8_t* from, tag_msg_char* to, std::size_t count) noexcept {
    constexpr std::size_t kStep = 4;
    if (count < kStep) return ConvertScalar(from, to, count);
    const std::size_t last = count - kStep;  // the last step may overlap the one before
    for (std::size_t index = 0; index < last; index += kStep) ConvertFour(from + index * sizeof *to, to + index);
    ConvertFour(from + last * sizeof *to, to + last);
}

// Converts eight records at a time. A 6-bit field is an index into a table of 64 bytes.
ZEL_VBMI void ConvertVbmi(const std::uint8_t* from, tag_msg_char* to, std::size_t count) noexcept {
    constexpr std::size_t kStep = 8;
    static constexpr auto kFlags = TableOf<64>(ReverseFlags, 1), kSet = TableOf<64>(ReorderColourSet, 1);
    const __m512i flags = _mm512_loadu_si512(kFlags.data()), set = _mm512_loadu_si512(kSet.data()),
                  rotations = _mm512_set1_epi64(0x0002000E000E000E), six_bits = _mm512_set1_epi64(0x00000000003F003F);
    constexpr __mmask64 kFirstBytes = 0x0101010101010101, kThirdBytes = kFirstBytes << 2;
    for (std::size_t index = 0; index < count; index += kStep) {
        const auto present = static_cast<__mmask8>(count - index < kStep ? (1U << (count - index)) - 1 : 0xFF);
        const __m512i file = _mm512_maskz_loadu_epi64(present, from + index * sizeof *to);
        const __m512i rotated = _mm512_shldv_epi16(file, file, rotations);
        const __m512i fields = _mm512_mask_permutexvar_epi8(_mm512_maskz_permutexvar_epi8(kFirstBytes, rotated, flags),
                                                            kThirdBytes, rotated, set);
        constexpr int kSelect = 0xCA;  // for each bit: six_bits ? fields : rotated
        _mm512_mask_storeu_epi64(to + index, present, _mm512_ternarylogic_epi64(six_bits, fields, rotated, kSelect));
    }
}

#endif

constexpr Path kPaths[] = {
#if defined(__SSE2__)
    {"AVX-512 VBMI", base::Instructions::kVbmi, ConvertVbmi},
    {"AVX2", base::Instructions::kAvx2, ConvertAvx2},
#endif
    {"scalar", base::Instructions::kNone, ConvertScalar},
};

}  // namespace

std::span<const Path> Paths() noexcept {
    return base::SupportedPaths(kPaths);
}

}  // namespace zel::message::msg_chars
