#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// Writers and readers of the files that the module reads. They share no code with the module, so that tests have an
/// independent source of bytes. The writers check nothing: every value that a field can hold is written, even one that
/// no valid file contains.
namespace zel::files {

using Bytes = std::vector<std::uint8_t>;

/// A growing block of bytes. Numbers are written big-endian and truncated to their width.
class ByteWriter {
  public:
    ByteWriter& U8(std::uint32_t value);
    ByteWriter& U16(std::uint32_t value);
    ByteWriter& U32(std::uint32_t value);
    ByteWriter& Append(std::span<const std::uint8_t> bytes);
    /// A text field of `width` bytes: the text, truncated or filled up to the width. No terminator is added.
    ByteWriter& Text(std::string_view text, std::size_t width, std::uint8_t fill = 0);
    ByteWriter& Fill(std::size_t count, std::uint8_t value = 0);

    /// Drops what follows the first `size` bytes.
    void Cut(std::size_t size) { m_bytes.resize(std::min(size, m_bytes.size())); }

    std::size_t Size() const noexcept { return m_bytes.size(); }
    const Bytes& Written() const noexcept { return m_bytes; }

  private:
    Bytes m_bytes;
};

/// A record of N bytes, filled with bit fields from the most significant bit of its first byte.
template <std::size_t N>
class BitRecord {
  public:
    /// Appends the low `width` bits of `value`, 1 to 32 of them. Bits beyond the record's end are dropped.
    constexpr BitRecord& Put(unsigned width, std::uint32_t value) noexcept {
        while (width > 0 && m_used < 8 * N) {
            const unsigned free = 8 - m_used % 8;
            const unsigned taken = width < free ? width : free;
            const std::uint32_t bits = (value >> (width - taken)) & ((1U << taken) - 1);
            m_bytes[m_used / 8] = static_cast<std::uint8_t>(m_bytes[m_used / 8] | bits << (free - taken));
            m_used += taken;
            width -= taken;
        }
        return *this;
    }
    constexpr const std::array<std::uint8_t, N>& Written() const noexcept { return m_bytes; }

  private:
    std::array<std::uint8_t, N> m_bytes{};
    unsigned m_used = 0;
};
static_assert(BitRecord<2>().Put(6, 0x3F).Put(10, 1).Written() == std::array<std::uint8_t, 2>{0xFC, 0x01});

}  // namespace zel::files
