#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "module/message/format/byte_order.h"

namespace zel::message {

/// Reads big-endian fields from a span, front to back. Bytes beyond the span's end read as zeros, so that a record cut
/// short is filled up with zeros and never with what memory held.
///
/// | call    | moves by | gives                                   |
/// |---------|----------|-----------------------------------------|
/// | U8      | 1        | the byte                                |
/// | U16     | 2        | the word, converted                     |
/// | U32     | 4        | the double word, converted              |
/// | Bytes   | its size | the bytes as they stand                 |
class BigEndianCursor {
  public:
    explicit BigEndianCursor(std::span<const std::uint8_t> bytes) noexcept : m_bytes(bytes) {}

    std::uint8_t U8() noexcept { return Bytes<1>()[0]; }
    std::uint16_t U16() noexcept { return SwapWord(std::bit_cast<std::uint16_t>(Bytes<2>())); }
    std::uint32_t U32() noexcept { return SwapLong(std::bit_cast<std::uint32_t>(Bytes<4>())); }

    template <std::size_t N>
    std::array<std::uint8_t, N> Bytes() noexcept {
        std::array<std::uint8_t, N> out{};
        if (m_bytes.size() >= N) {  // a copy of fixed length is one or two instructions
            std::memcpy(out.data(), m_bytes.data(), N);
            m_bytes = m_bytes.subspan(N);
        } else {
            std::copy(m_bytes.begin(), m_bytes.end(), out.begin());
            m_bytes = {};
        }
        return out;
    }

  private:
    std::span<const std::uint8_t> m_bytes;  // what is left
};

}  // namespace zel::message
