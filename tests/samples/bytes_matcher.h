#pragma once

#include <string>

#include "samples/byte_writer.h"

namespace zel::samples_test {

using samples::Bytes;

/// Bytes as hexadecimal text, blanks between groups being free: "02BE 0000".
inline Bytes Hex(const std::string& text) {
    Bytes bytes;
    std::string digits;
    for (const char c : text) {
        if (c == ' ') continue;
        digits += c;
        if (digits.size() < 2) continue;
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(digits, nullptr, 16)));
        digits.clear();
    }
    return bytes;
}

/// `count` bytes from `offset`, which have to be there.
inline Bytes Slice(const Bytes& bytes, std::size_t offset, std::size_t count) {
    Bytes slice;
    for (std::size_t n = 0; n < count; ++n) slice.push_back(bytes.at(offset + n));
    return slice;
}

}  // namespace zel::samples_test
