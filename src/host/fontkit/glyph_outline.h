#pragma once

#include <vector>

#include "host/fontkit/font_art.h"
#include "module/contract/records/video_standard.h"

namespace zel::fontkit {

/// A point of an outline in font units, y upwards from the baseline.
struct GlyphPoint {
    int x = 0, y = 0;
    friend bool operator==(const GlyphPoint&, const GlyphPoint&) = default;
};

/// The outline of one glyph: closed contours of straight lines.
struct GlyphOutline {
    std::vector<std::vector<GlyphPoint>> contours;

    int PointCount() const noexcept;
};

/// From pixels to font units.
struct FontScale {
    /// Pixels of the em square, which are the size at which a pixel of the font is one of the screen.
    int em_pixels = 1;
    /// Units of a pixel's height.
    int units = 1;
    /// Shape of a pixel.
    PixelAspect aspect;

    int UnitsPerEm() const noexcept { return em_pixels * units; }
    int X(double pixels) const noexcept;
    int Y(double pixels) const noexcept;
};

/// The scale of a font: as many units as its largest glyph leaves room for in 16 bits.
FontScale ScaleOf(const FontArt& art, PixelAspect aspect);

/// Traces a plane of a glyph.
/// @param top  of the plane above the baseline, in pixels.
GlyphOutline OutlineOf(const CoveragePlane& plane, int top, const FontScale& scale);

}  // namespace zel::fontkit
