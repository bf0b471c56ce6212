#include "module/message/format/msg_chars.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "base/vector_support.h"

namespace zel::message {

// A word of the file, taken as it lies, has its two bytes the wrong way round, which is a turn by 8 bits; the memory
// form has the six bits of a field below and the ten of a position on top, a turn by 6. Together they turn words 0 to 2
// by 2 bits to the right. The last word has its ten bits below, which together makes 2 bits to the left. What remains
// is the order of the six bits below in words 0 and 1.

namespace msg_chars {

namespace {

// place_flag and chain_end stand among these: the file's top bit is the memory's lowest.
constexpr unsigned TurnFlags(unsigned six) noexcept {
    return (six & 1) << 5 | (six & 2) << 3 | (six & 4) << 1 | (six >> 1 & 4) | (six >> 3 & 2) | six >> 5;
}
// Bits 5-4 stay in order in bits 1-0, bit 3 goes to bit 2, bits 2-0 (colour_set) to bits 5-3.
constexpr unsigned TurnSet(unsigned six) noexcept {
    return six >> 4 | (six >> 1 & 4) | (six & 7) << 3;
}
static_assert(TurnFlags(0x20) == 0x01 && TurnFlags(0x08) == 0x04 && TurnSet(0x20) == 0x02 && TurnSet(0x04) == 0x20);

/// What becomes of `count` bytes, the n-th of which has the six bits n * `step`.
template <std::size_t count>
constexpr auto Turned(unsigned (*turn)(unsigned), unsigned step) noexcept {
    std::array<std::uint8_t, count> turned{};
    for (unsigned n = 0; n < count; ++n) turned[n] = static_cast<std::uint8_t>(turn(n * step & 0x3F));
    return turned;
}

void ConvertScalar(const std::uint8_t* from, tag_msg_char* to, std::size_t count) noexcept {
    static constexpr auto kFlags = Turned<64>(TurnFlags, 1), kSet = Turned<64>(TurnSet, 1);
    for (; count > 0; --count, from += sizeof *to, ++to) {
        std::uint64_t file = 0;
        std::memcpy(&file, from, sizeof file);
        const std::uint64_t turned = (file >> 2 & 0x00003FFF3FFF3FFF) | (file << 14 & 0x0000C000C000C000) |
                                     (file << 2 & 0xFFFC000000000000) | (file >> 14 & 0x0003000000000000);
        const std::uint64_t memory =
            (turned & 0xFFFFFFFFFFC0FFC0) | kFlags[turned & 0x3F] | std::uint64_t{kSet[turned >> 16 & 0x3F]} << 16;
        *to = std::bit_cast<tag_msg_char>(memory);
    }
}

#if defined(__SSE2__)

ZEL_AVX2 inline __m256i BothHalves(const std::array<std::uint8_t, 16>& table) noexcept {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(table.data())));
}

// Four records. The six bits go through tables of four bits each, in which nothing gives nothing.
ZEL_AVX2 inline void ConvertFour(const std::uint8_t* from, tag_msg_char* to) noexcept {
    static constexpr auto kLowFlags = Turned<16>(TurnFlags, 1), kHighFlags = Turned<16>(TurnFlags, 16),
                          kLowSet = Turned<16>(TurnSet, 1);
    const __m256i file = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
    const __m256i turns = _mm256_set1_epi64x(0x0004400040004000);  // as factors
    const __m256i turned = _mm256_or_si256(_mm256_mullo_epi16(file, turns), _mm256_mulhi_epu16(file, turns));
    const __m256i above = _mm256_srli_epi64(turned, 4);
    const __m256i low_flags =
                      _mm256_shuffle_epi8(BothHalves(kLowFlags), _mm256_and_si256(turned, _mm256_set1_epi64x(0x0F))),
                  high_flags =
                      _mm256_shuffle_epi8(BothHalves(kHighFlags), _mm256_and_si256(above, _mm256_set1_epi64x(0x03))),
                  low_set =
                      _mm256_shuffle_epi8(BothHalves(kLowSet), _mm256_and_si256(turned, _mm256_set1_epi64x(0x0F0000))),
                  high_set = _mm256_and_si256(above, _mm256_set1_epi64x(0x030000)),
                  kept = _mm256_and_si256(turned, _mm256_set1_epi64x(static_cast<long long>(0xFFFFFFFFFFC0FFC0)));
    const __m256i flags = _mm256_or_si256(low_flags, high_flags), set = _mm256_or_si256(low_set, high_set);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), _mm256_or_si256(_mm256_or_si256(flags, set), kept));
}

ZEL_AVX2 void ConvertAvx2(const std::uint8_t* from, tag_msg_char* to, std::size_t count) noexcept {
    constexpr std::size_t kStep = 4;
    if (count < kStep) return ConvertScalar(from, to, count);
    const std::size_t last = count - kStep;  // the last step reaches back over the one before
    for (std::size_t at = 0; at < last; at += kStep) ConvertFour(from + at * sizeof *to, to + at);
    ConvertFour(from + last * sizeof *to, to + last);
}

// Eight records. The six bits index a table of 64.
ZEL_VBMI void ConvertVbmi(const std::uint8_t* from, tag_msg_char* to, std::size_t count) noexcept {
    constexpr std::size_t kStep = 8;
    static constexpr auto kFlags = Turned<64>(TurnFlags, 1), kSet = Turned<64>(TurnSet, 1);
    const __m512i flags = _mm512_loadu_si512(kFlags.data()), set = _mm512_loadu_si512(kSet.data()),
                  turns = _mm512_set1_epi64(0x0002000E000E000E), six_bits = _mm512_set1_epi64(0x00000000003F003F);
    constexpr __mmask64 kFirstBytes = 0x0101010101010101, kThirdBytes = kFirstBytes << 2;
    for (std::size_t at = 0; at < count; at += kStep) {
        const auto held = static_cast<__mmask8>(count - at < kStep ? (1U << (count - at)) - 1 : 0xFF);
        const __m512i file = _mm512_maskz_loadu_epi64(held, from + at * sizeof *to);
        const __m512i turned = _mm512_shldv_epi16(file, file, turns);
        const __m512i fields = _mm512_mask_permutexvar_epi8(_mm512_maskz_permutexvar_epi8(kFirstBytes, turned, flags),
                                                            kThirdBytes, turned, set);
        constexpr int kSecondWhereFirst = 0xCA;  // first ? second : third
        _mm512_mask_storeu_epi64(to + at, held, _mm512_ternarylogic_epi64(six_bits, fields, turned, kSecondWhereFirst));
    }
}

constexpr Path kPaths[] = {{"AVX-512 VBMI", ConvertVbmi}, {"AVX2", ConvertAvx2}, {"scalar", ConvertScalar}};

#else

constexpr Path kPaths[] = {{"scalar", ConvertScalar}};

#endif

}  // namespace

std::span<const Path> Paths() noexcept {
    const std::span<const Path> paths(kPaths);
#if defined(__SSE2__)
    return paths.subspan(base::HasVbmi() ? 0 : base::HasAvx2() ? 1 : 2);
#else
    return paths;
#endif
}

}  // namespace msg_chars

}  // namespace zel::message
