#pragma once

#include <memory>
#include <string>

#include "samples/run_codes.h"

namespace zel::samples {

/// A typeface and the size to draw it at.
struct FaceChoice {
    std::string family{};  ///< as fontconfig knows it
    bool bold = false;
    unsigned em = 0;               ///< lines
    unsigned width_percent = 100;  ///< below 100 condensed
    bool slanted = false;          ///< an upright face is leaned to the right
};

/// One character as drawn: its coverage, cut to the ink, and its place around the pen.
struct RasterGlyph {
    Coverage coverage{};
    int left = 0;     ///< pixels from the pen to the first column
    int top = 0;      ///< lines from the baseline up to the upper edge of the first line
    int advance = 0;  ///< pixels
};

/// Draws the characters of an installed typeface with 256 levels of coverage. The same machine gives the same bytes on
/// every run.
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
    /// Pixels by which a pair stands closer (below 0) or wider than its advance.
    int Kerning(char32_t left, char32_t right) const;

  private:
    struct Face;
    std::unique_ptr<Face> m_face;
};

}  // namespace zel::samples
