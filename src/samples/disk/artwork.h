#pragma once

#include <functional>

#include "files/font_writer.h"

/// Pictures in colour as stored glyphs: alpha first, colours multiplied by alpha.
namespace zel::samples {

/// A colour, each component 0 to 255, and its opacity, 0 to 1. Colours aren't multiplied by alpha.
struct Paint {
    double red = 0, green = 0, blue = 0;
    double alpha = 1;
};

Paint Mix(const Paint& from, const Paint& to, double share);

/// `over` composited over `under`.
Paint Over(const Paint& over, const Paint& under);

/// Paints a picture point by point; each pixel is the mean of 4 x 4 points, which smooths every outline.
/// @param paint  is called with a point in pixels from the upper left corner.
files::StoredGlyph PaintPicture(unsigned width, unsigned height, const std::function<Paint(double x, double y)>& paint);

/// Paints a picture pixel by pixel. @param paint  is called with column and row.
files::StoredGlyph PaintPixels(unsigned width, unsigned height,
                               const std::function<Paint(unsigned x, unsigned y)>& paint);

/// The pictures of the demonstration disk's artwork font, with their character codes.
enum class Artwork : unsigned {
    kLowerThird = 'L',
    kRule = 'R',
    kStrip = 'S',
    kDarkStrip = 'T',
    kSun = '1',
    kCloud = '2',
    kRain = '3',
};
files::StoredGlyph PaintArtwork(Artwork which);

/// The pictures of the RGBA files: a round station mark with a soft shadow, and a full-screen background.
files::StoredGlyph PaintStationMark();
files::StoredGlyph PaintBackdrop();

/// The colour of a metal letter at a height, from 0 at its bottom to 1 at its top.
Paint Chrome(double height);
Paint Gold(double height);

}  // namespace zel::samples
