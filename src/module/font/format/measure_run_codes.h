#pragma once

#include <span>

#include "base/instructions.h"
#include "module/font/format/run_codes.h"

namespace zel::font {

/// Width and height in pixels.
struct GlyphSize {
    int width = 0;
    int height = 0;
    bool operator==(const GlyphSize&) const = default;
};

/// Size of a run-coded glyph's bitmap. The width is that of the longest line, rounded up to a multiple of 4. The height
/// is the number of lines plus 2, for one blank row above and one below.
GlyphSize MeasureRunCodes(RunCodeReader codes) noexcept;

/// One implementation of MeasureRunCodes. All implementations give the same size.
struct MeasurePath {
    const char* name;
    base::Instructions needs;
    GlyphSize (*measure)(RunCodeReader codes) noexcept;
};

/// The implementations that this processor supports, the fastest first. The last one needs no vector instructions.
std::span<const MeasurePath> MeasurePaths() noexcept;

}  // namespace zel::font
