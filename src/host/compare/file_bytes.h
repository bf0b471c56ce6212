#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zel::compare {

/// Where the bytes of two files differ.
struct ByteDifference {
    std::uint64_t size_a = 0, size_b = 0;
    /// Bytes that differ; those beyond the end of the shorter file are among them.
    std::uint64_t count = 0;
    /// Offsets of the first and the last one; 0 without any.
    std::uint64_t first = 0, last = 0;
};

/// Compares two regular files piece by piece.
/// @param count_all  false: stop at the first byte that differs; `count` is 1 then, or the difference of the sizes.
/// @throws std::runtime_error  with the file's name and the reason.
ByteDifference CompareBytes(const std::string& a, const std::string& b, bool count_all);

}  // namespace zel::compare
