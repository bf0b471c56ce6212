#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "module/message/format/byte_order.h"

namespace zel::message {

/// Reads big-endian fields from a span, front to back. Bytes beyond the end of the span read as zeros, so a truncated
/// record is padded with zeros and never contains uninitialised memory.
///
/// | call    | advances by | returns                        |
/// |---------|-------------|--------------------------------|
/// | U8      | 1           | the byte                       |
/// | U16     | 2           | the word, in native byte order |
/// | U32     | 4           | the double word, likewise      |
/// | Bytes   | its size    | the bytes, unchanged           |
class BigEndianCursor {
  public:
    /// @param bytes  must outlive the cursor.
    explicit BigEndianCursor(std::span<const std::uint8_t> bytes) noexcept : m_rest(bytes) {}

    std::uint8_t U8() noexcept { return Bytes<1>()[0]; }
    std::uint16_t U16() noexcept { return SwapWord(std::bit_cast<std::uint16_t>(Bytes<2>())); }
    std::uint32_t U32() noexcept { return SwapLong(std::bit_cast<std::uint32_t>(Bytes<4>())); }

    template <std::size_t N>
    std::array<std::uint8_t, N> Bytes() noexcept {
        std::array<std::uint8_t, N> out{};
        if (m_rest.size() >= N) {  // a copy of constant length compiles to one or two instructions
            std::memcpy(out.data(), m_rest.data(), N);
            m_rest = m_rest.subspan(N);
        } else {
            std::copy(m_rest.begin(), m_rest.end(), out.begin());
            m_rest = {};
        }
        return out;
    }

  private:
    std::span<const std::uint8_t> m_rest;
};

}  // namespace zel::message
