#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

/// Writers of the files that the module reads. They share no code with the module, so that a test has an independent
/// source of bytes, and they check nothing: whatever a field can hold is written, also what no sane file would hold.
namespace zel::samples {

using Bytes = std::vector<std::uint8_t>;

/// A growing block of bytes; numbers go in big-endian, cut to their width.
class ByteWriter {
  public:
    ByteWriter& U8(std::uint32_t value);
    ByteWriter& U16(std::uint32_t value);
    ByteWriter& U32(std::uint32_t value);
    ByteWriter& Append(std::span<const std::uint8_t> bytes);
    /// A text field of `width` bytes: the text cut to the width, the rest filled up. No terminator of its own.
    ByteWriter& Text(std::string_view text, std::size_t width, std::uint8_t fill = 0);
    ByteWriter& Fill(std::size_t count, std::uint8_t value = 0);

    std::size_t Size() const noexcept { return m_bytes.size(); }
    const Bytes& Written() const noexcept { return m_bytes; }

  private:
    Bytes m_bytes;
};

/// A record of N bytes that is packed with bit fields from the most significant bit of its first byte down.
template <std::size_t N>
class BitRecord {
  public:
    /// Appends the low `width` bits of `value`, 1 to 32 of them. Bits that no longer fit the record are dropped.
    constexpr BitRecord& Put(unsigned width, std::uint32_t value) noexcept {
        while (width-- > 0 && m_used < 8 * N) {
            const auto bit = static_cast<std::uint8_t>((value >> width & 1U) << (7 - m_used % 8));
            m_bytes[m_used / 8] = static_cast<std::uint8_t>(m_bytes[m_used / 8] | bit);
            ++m_used;
        }
        return *this;
    }
    constexpr const std::array<std::uint8_t, N>& Written() const noexcept { return m_bytes; }

  private:
    std::array<std::uint8_t, N> m_bytes{};
    std::size_t m_used = 0;
};
static_assert(BitRecord<2>().Put(6, 0x3F).Put(10, 1).Written() == std::array<std::uint8_t, 2>{0xFC, 0x01});

}  // namespace zel::samples
