#pragma once

#include <bit>
#include <cstdint>
#include <span>

namespace zel::message {

static_assert(std::endian::native == std::endian::little, "the records in memory are little-endian words");

/// The 32-bit value with its four bytes reversed. Zelmara! files are big-endian; a loader converts each field once.
constexpr std::uint32_t SwapLong(std::uint32_t value) noexcept {
    return value >> 24 | (value >> 8 & 0xFF00U) | (value << 8 & 0xFF0000U) | value << 24;
}

/// The 16-bit value with its two bytes exchanged.
constexpr std::uint16_t SwapWord(std::uint16_t value) noexcept {
    return static_cast<std::uint16_t>(value >> 8 | value << 8);
}

/// Applies SwapLong to each value, in place.
void SwapLongs(std::span<std::uint32_t> values) noexcept;

static_assert(SwapLong(0x12345678) == 0x78563412 && SwapWord(0x1234) == 0x3412);

}  // namespace zel::message
