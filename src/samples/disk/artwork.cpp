#include "samples/disk/artwork.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace zel::samples {
namespace {

constexpr Paint kClear{0, 0, 0, 0};

void Append(const Paint& paint, files::Bytes& pixels) {
    const auto part = [](double value) {
        return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
    };
    pixels.push_back(part(paint.alpha * 255));
    for (const double colour : {paint.blue, paint.green, paint.red}) pixels.push_back(part(colour * paint.alpha));
}

struct Stop {
    double at;
    Paint paint;
};

Paint Gradient(std::span<const Stop> stops, double at) {
    for (std::size_t n = 1; n < stops.size(); ++n) {
        if (at > stops[n].at) continue;
        const double share = (at - stops[n - 1].at) / (stops[n].at - stops[n - 1].at);
        return Mix(stops[n - 1].paint, stops[n].paint, std::clamp(share, 0.0, 1.0));
    }
    return stops.back().paint;
}

bool InCircle(double x, double y, double centre_x, double centre_y, double radius) {
    return std::hypot(x - centre_x, y - centre_y) <= radius;
}

bool InRounded(double x, double y, double width, double height, double radius) {
    const double dx = std::max({radius - x, x - (width - radius), 0.0});
    const double dy = std::max({radius - y, y - (height - radius), 0.0});
    return std::hypot(dx, dy) <= radius;
}

/// A plate that fades out to the right, with a bright line along its top and a coloured block at its left end.
files::StoredGlyph PaintLowerThird() {
    constexpr unsigned kWidth = 584, kHeight = 92;
    return PaintPicture(kWidth, kHeight, [](double x, double y) -> Paint {
        const double fade = std::clamp((kWidth - x) / 180.0, 0.0, 1.0);
        if (x < 10) return {224, 168, 48, 1};
        if (x < 12) return kClear;
        if (y < 2) return {150, 190, 235, 0.9 * fade};
        Paint plate = Mix({36, 74, 132, 1}, {10, 26, 58, 1}, y / kHeight);
        plate.alpha = 0.88 * fade;
        return plate;
    });
}

files::StoredGlyph PaintRule() {
    return PaintPicture(576, 4, [](double x, double y) -> Paint {
        const double fade = std::clamp(std::min(x, 576 - x) / 60, 0.0, 1.0);
        return y < 2 ? Paint{236, 190, 84, fade} : Paint{40, 30, 10, 0.7 * fade};
    });
}

files::StoredGlyph PaintStrip(const Paint& top, const Paint& foot) {
    constexpr unsigned kWidth = 576, kHeight = 38;
    return PaintPicture(kWidth, kHeight, [&](double x, double y) {
        return InRounded(x, y, kWidth, kHeight, 6) ? Mix(top, foot, y / kHeight) : kClear;
    });
}

bool InCloud(double x, double y) {
    const bool body = x > 12 && x < 38 && y > 20 && y < 32;
    return body || InCircle(x, y, 12, 25, 7) || InCircle(x, y, 22, 19, 10) || InCircle(x, y, 34, 24, 8);
}

Paint CloudPaint(double y) {
    return Mix({250, 252, 255, 1}, {168, 182, 200, 1}, (y - 9) / 23);
}

files::StoredGlyph PaintSun() {
    return PaintPicture(48, 40, [](double x, double y) -> Paint {
        const double angle = std::atan2(y - 20, x - 24) / std::acos(-1.0) * 6;  // 12 rays
        const double distance = std::hypot(x - 24, y - 20);
        const double off_ray = std::abs(angle - std::round(angle));
        if (distance <= 10) return Mix({255, 236, 130, 1}, {250, 180, 40, 1}, distance / 10);
        const bool ray = distance > 12.5 && distance < 19 && off_ray < 0.16;
        return ray ? Paint{252, 200, 66, 1} : kClear;
    });
}

files::StoredGlyph PaintCloud() {
    return PaintPicture(48, 40, [](double x, double y) { return InCloud(x, y) ? CloudPaint(y) : kClear; });
}

files::StoredGlyph PaintRain() {
    return PaintPicture(48, 40, [](double x, double y) -> Paint {
        if (InCloud(x, y + 4)) return Over({90, 104, 126, 0.45}, CloudPaint(y + 4));
        const double along = x + (y - 30) * 0.45;  // drops fall to the left
        const bool drop = y > 30 && y < 39 && std::abs(std::fmod(along - 4, 8) - 4) < 1.1 && along > 9 && along < 38;
        return drop ? Paint{110, 180, 250, 1} : kClear;
    });
}

/// A horizon in a golden ring, within a circle of 58 pixels around 60, 60.
Paint PaintMark(double x, double y) {
    if (!InCircle(x, y, 60, 60, 58)) return kClear;
    if (!InCircle(x, y, 60, 60, 53)) return Gold(1 - y / 120);
    if (InCircle(x, y, 60, 60, 50) && !InCircle(x, y, 60, 60, 48)) return {236, 240, 250, 0.9};
    const double wave = 66 + 7 * std::sin(x / 9.5);
    if (InCircle(x, y, 60, 48, 17)) return {250, 214, 110, 1};
    return y < wave ? Mix({62, 110, 180, 1}, {150, 190, 232, 1}, y / 66)
                    : Mix({20, 60, 120, 1}, {8, 24, 60, 1}, (y - 59) / 60);
}

}  // namespace

Paint Mix(const Paint& from, const Paint& to, double share) {
    const auto mix = [share](double a, double b) { return a + (b - a) * share; };
    return {mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue), mix(from.alpha, to.alpha)};
}

Paint Over(const Paint& over, const Paint& under) {
    const double alpha = over.alpha + (1 - over.alpha) * under.alpha;
    if (alpha <= 0) return kClear;
    Paint paint = Mix(under, over, over.alpha / alpha);
    paint.alpha = alpha;
    return paint;
}

files::StoredGlyph PaintPixels(unsigned width, unsigned height, const std::function<Paint(unsigned, unsigned)>& paint) {
    files::StoredGlyph glyph;
    glyph.width = width;
    glyph.height = height;
    for (unsigned y = 0; y < height; ++y) {
        for (unsigned x = 0; x < width; ++x) Append(paint(x, y), glyph.pixels);
    }
    return glyph;
}

files::StoredGlyph PaintPicture(unsigned width, unsigned height, const std::function<Paint(double, double)>& paint) {
    constexpr unsigned kPoints = 4;
    return PaintPixels(width, height, [&](unsigned x, unsigned y) {
        Paint sum = kClear;
        for (unsigned n = 0; n < kPoints * kPoints; ++n) {
            const unsigned column = n % kPoints, line = n / kPoints;
            const Paint point = paint(x + (column + 0.5) / kPoints, y + (line + 0.5) / kPoints);
            sum.red += point.red * point.alpha;
            sum.green += point.green * point.alpha;
            sum.blue += point.blue * point.alpha;
            sum.alpha += point.alpha;
        }
        if (sum.alpha <= 0) return kClear;
        return Paint{sum.red / sum.alpha, sum.green / sum.alpha, sum.blue / sum.alpha, sum.alpha / kPoints / kPoints};
    });
}

files::StoredGlyph PaintArtwork(Artwork which) {
    switch (which) {
        case Artwork::kLowerThird:
            return PaintLowerThird();
        case Artwork::kRule:
            return PaintRule();
        case Artwork::kStrip:
            return PaintStrip({52, 96, 160, 0.86}, {24, 54, 104, 0.86});
        case Artwork::kDarkStrip:
            return PaintStrip({26, 46, 84, 0.86}, {12, 26, 56, 0.86});
        case Artwork::kSun:
            return PaintSun();
        case Artwork::kCloud:
            return PaintCloud();
        case Artwork::kRain:
            return PaintRain();
    }
    return {};
}

files::StoredGlyph PaintStationMark() {
    constexpr double kMargin = 12;  // around the mark, for its shadow
    return PaintPicture(144, 144, [](double x, double y) {
        const double from_mark = std::hypot(x - 72, y - 75) - 54;
        const Paint shadow{0, 4, 16, 0.6 * std::clamp(1 - from_mark / 14, 0.0, 1.0)};
        return Over(PaintMark(x - kMargin, y - kMargin), shadow);
    });
}

files::StoredGlyph PaintBackdrop() {
    return PaintPixels(720, 486, [](unsigned x, unsigned y) {
        const Paint ground = Mix({20, 44, 96, 1}, {6, 12, 34, 1}, y / 485.0);
        const double glow = std::exp(-std::pow((y - 330.0) / 90, 2)) * std::exp(-std::pow((x - 210.0) / 300, 2));
        const Paint paint = Mix(ground, {92, 132, 196, 1}, 0.75 * glow);
        const double from_line = std::abs(std::fmod(y + x / 6.0, 54) - 27);
        return Mix(paint, {130, 164, 216, 1}, 0.25 * std::clamp(1.8 - from_line, 0.0, 1.0));
    });
}

Paint Chrome(double height) {
    static constexpr std::array<Stop, 6> kStops{{{0.0, {222, 230, 242, 1}},
                                                 {0.30, {126, 146, 178, 1}},
                                                 {0.47, {52, 66, 96, 1}},
                                                 {0.50, {250, 252, 255, 1}},
                                                 {0.78, {150, 182, 222, 1}},
                                                 {1.0, {236, 244, 255, 1}}}};
    return Gradient(kStops, height);
}

Paint Gold(double height) {
    static constexpr std::array<Stop, 5> kStops{{{0.0, {150, 92, 16, 1}},
                                                 {0.35, {214, 152, 44, 1}},
                                                 {0.55, {255, 238, 170, 1}},
                                                 {0.75, {240, 190, 74, 1}},
                                                 {1.0, {255, 226, 140, 1}}}};
    return Gradient(kStops, height);
}

}  // namespace zel::samples
