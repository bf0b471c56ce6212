#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace zel::fontkit {

/// The bytes of a table, big-endian.
class SfntTable {
  public:
    SfntTable& U8(unsigned value) { return Append(value, 1); }
    SfntTable& U16(unsigned value) { return Append(value, 2); }
    SfntTable& U32(std::uint32_t value) { return Append(value, 4); }
    SfntTable& U64(std::uint64_t value) {
        return U32(static_cast<std::uint32_t>(value >> 32)).U32(static_cast<std::uint32_t>(value));
    }
    SfntTable& S16(int value) { return U16(static_cast<unsigned>(value) & 0xFFFF); }
    SfntTable& Text(std::string_view bytes) {
        m_bytes += bytes;
        return *this;
    }
    /// Zeros up to a multiple of `size`.
    SfntTable& Pad(std::size_t size) {
        m_bytes.resize((m_bytes.size() + size - 1) / size * size);
        return *this;
    }

    std::size_t Size() const noexcept { return m_bytes.size(); }
    const std::string& Bytes() const noexcept { return m_bytes; }

  private:
    SfntTable& Append(std::uint32_t value, int size) {
        for (int shift = size * 8 - 8; shift >= 0; shift -= 8) m_bytes += static_cast<char>(value >> shift);
        return *this;
    }

    std::string m_bytes;
};

/// The tables of a font file, by tag.
using SfntTables = std::map<std::string, SfntTable>;

/// A font file of TrueType outlines: the directory, then the tables in the order of their tags, each padded to four
/// bytes. Sets checkSumAdjustment of the table head, which must be there with a zero in its place.
std::string SfntFile(const SfntTables& tables);

}  // namespace zel::fontkit
