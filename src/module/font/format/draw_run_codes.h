#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "module/font/format/run_codes.h"

namespace zel::font {

struct RunColour {
    std::uint8_t red = 0, green = 0, blue = 0;
};

/// The colours of a run-coded glyph.
struct RunColours {
    /// Maximum number of colours.
    static constexpr std::size_t kMaxCount = 32;

    /// By colour index. An index without a colour is black.
    std::span<const RunColour> colours;
    RunColour background;

    RunColour operator[](std::uint8_t index) const noexcept {
        return index < colours.size() ? colours[index] : RunColour{};
    }
};

/// The bitmap of a glyph: rows of pixels of 4 bytes (blue, green, red, alpha; straight colours).
struct PixelRows {
    /// First byte of the top row.
    std::uint8_t* top = nullptr;
    /// Bytes from the start of a row to the start of the row below; negative in a bottom-up bitmap.
    std::ptrdiff_t stride = 0;
    /// In pixels.
    int width = 0;
    int height = 0;
    /// Value of every byte before the glyph is drawn. Without it, the bitmap's present content is kept.
    std::optional<std::uint8_t> fill{};
};

/// Draws a run-coded glyph. The first row, and all pixels that the glyph doesn't cover, keep their content; blended
/// runs mix with it. Codes beyond the end of a line or below the last row draw nothing.
void DrawRunCodes(RunCodeReader codes, const RunColours& colours, const PixelRows& rows) noexcept;

}  // namespace zel::font
