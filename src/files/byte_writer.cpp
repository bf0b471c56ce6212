#include "files/byte_writer.h"

#include <algorithm>

namespace zel::files {

ByteWriter& ByteWriter::U8(std::uint32_t value) {
    m_bytes.push_back(static_cast<std::uint8_t>(value));
    return *this;
}

ByteWriter& ByteWriter::U16(std::uint32_t value) {
    return U8(value >> 8).U8(value);
}

ByteWriter& ByteWriter::U32(std::uint32_t value) {
    return U16(value >> 16).U16(value);
}

ByteWriter& ByteWriter::Append(std::span<const std::uint8_t> bytes) {
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    return *this;
}

ByteWriter& ByteWriter::Text(std::string_view text, std::size_t width, std::uint8_t fill) {
    const std::string_view fitting = text.substr(0, width);
    std::ranges::transform(fitting, std::back_inserter(m_bytes), [](char c) { return static_cast<std::uint8_t>(c); });
    return Fill(width - fitting.size(), fill);
}

ByteWriter& ByteWriter::Fill(std::size_t count, std::uint8_t value) {
    m_bytes.insert(m_bytes.end(), count, value);
    return *this;
}

}  // namespace zel::files
