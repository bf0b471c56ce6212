#pragma once

#include <algorithm>

namespace zel::base {

/// Whether the distance from one character to the next in a row separates words: larger than the row is high, or
/// backwards, as between the columns of a table. In pixels.
constexpr bool IsWordGap(int row_height, int x, int next_x) noexcept {
    constexpr int kLeastGap = 32;  // for rows of little height
    return next_x < x || next_x - x > std::max(row_height, kLeastGap);
}

}  // namespace zel::base
