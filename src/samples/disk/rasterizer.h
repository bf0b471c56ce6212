#pragma once

#include <memory>
#include <string>

#include "files/run_codes.h"

namespace zel::samples {

/// A typeface and the size to draw it at.
struct FaceChoice {
    /// Fontconfig's name.
    std::string family{};
    bool bold = false;
    /// In lines.
    unsigned em = 0;
    /// Below 100 condensed.
    unsigned width_percent = 100;
    /// The upright face, slanted to the right.
    bool slanted = false;
};

/// One drawn character: its coverage, cropped to its outline, and its position relative to the pen.
struct RasterGlyph {
    files::Coverage coverage{};
    /// Pixels from the pen to the first column.
    int left = 0;
    /// Lines from the baseline up to the upper edge of the first line.
    int top = 0;
    /// In pixels.
    int advance = 0;
};

/// Draws the characters of an installed typeface with 256 levels of coverage. Every run on one machine gives the same
/// bytes.
class Rasterizer {
  public:
    /// @throws std::runtime_error with the typeface's name and the reason: not installed, or not readable.
    explicit Rasterizer(const FaceChoice& choice);
    ~Rasterizer();
    Rasterizer(Rasterizer&&) noexcept;
    Rasterizer& operator=(Rasterizer&&) noexcept;
    Rasterizer(const Rasterizer&) = delete;
    Rasterizer& operator=(const Rasterizer&) = delete;

    /// @throws std::runtime_error when the typeface can't draw the character.
    RasterGlyph Draw(char32_t character) const;
    /// Pixels to add to a pair's advance; negative moves the characters closer.
    int Kerning(char32_t left, char32_t right) const;

  private:
    struct Face;
    std::unique_ptr<Face> m_face;
};

}  // namespace zel::samples
