#pragma once

#include <cstdint>
#include <vector>

namespace zel::picture {

/// How much of each pixel a text character covers, 0 to 255, and its place around the pen on the baseline.
struct Coverage {
    /// Pixels from the pen right to the first column.
    int left = 0;
    /// Pixels from the baseline up to the upper edge of the first row.
    int top = 0;
    int width = 0;
    int height = 0;
    /// width * height bytes, top row first.
    std::vector<std::uint8_t> bytes;
};

}  // namespace zel::picture
