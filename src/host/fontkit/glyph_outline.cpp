#include "host/fontkit/glyph_outline.h"

#include <algorithm>
#include <cmath>

#include "host/fontkit/trace_outline.h"

namespace zel::fontkit {

namespace {

/// By how much a point may be off the traced line, in pixels. The tracing itself is within a twelfth of a pixel.
constexpr double kTolerance = 0.04;
/// Limits of unitsPerEm, and of a coordinate with some room.
constexpr int kFewestUnitsPerEm = 16, kMostUnitsPerEm = 16384, kFarthest = 32000;

std::vector<GlyphPoint> PointsOf(const OutlineContour& contour, int top, const FontScale& scale) {
    std::vector<GlyphPoint> points;
    for (const OutlinePoint& point : SimplifyContour(contour, kTolerance)) {
        const GlyphPoint in_units{scale.X(point.x), scale.Y(top - point.y)};
        if (points.empty() || points.back() != in_units) points.push_back(in_units);
    }
    while (points.size() > 1 && points.front() == points.back()) points.pop_back();
    return points;
}

}  // namespace

int GlyphOutline::PointCount() const noexcept {
    std::size_t count = 0;
    for (const auto& contour : contours) count += contour.size();
    return static_cast<int>(count);
}

int FontScale::X(double pixels) const noexcept {
    return static_cast<int>(std::lround(pixels * units * aspect.width / aspect.height));
}

int FontScale::Y(double pixels) const noexcept {
    return static_cast<int>(std::lround(pixels * units));
}

FontScale ScaleOf(const FontArt& art, PixelAspect aspect) {
    int farthest = std::max(art.base, art.line_height);
    for (const GlyphArt& glyph : art.glyphs) {
        const int below = glyph.height - glyph.top;
        farthest = std::max({farthest, glyph.width * aspect.width / aspect.height + 1,
                             glyph.advance * aspect.width / aspect.height + 1, glyph.top, below});
    }
    const int most = std::max(1, std::min(kMostUnitsPerEm / art.line_height, kFarthest / farthest));
    FontScale scale{art.line_height, most, aspect};
    // Whole units for a pixel's width: 11 divides the units, or they are a power of two for square pixels.
    if (aspect == PixelAspect()) {
        for (scale.units = 64; scale.units > most;) scale.units /= 2;
    } else if (most >= aspect.height) {
        scale.units = std::min(most / aspect.height, 6) * aspect.height;
    }
    if (scale.UnitsPerEm() < kFewestUnitsPerEm) scale.em_pixels = kFewestUnitsPerEm;
    return scale;
}

GlyphOutline OutlineOf(const CoveragePlane& plane, int top, const FontScale& scale) {
    GlyphOutline outline;
    for (const OutlineContour& contour : TraceOutline(plane)) {
        std::vector<GlyphPoint> points = PointsOf(contour, top, scale);
        if (points.size() >= 3) outline.contours.push_back(std::move(points));
    }
    return outline;
}

}  // namespace zel::fontkit
