#include "host/picture/png_rows.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

namespace zel::picture {

namespace {

/// Samples of a pixel at most.
constexpr std::size_t kMaxSamples = 4;

/// The differences of bytes from what a filter predicts of the bytes to the left, above, and above to the left. With
/// pointers that do not overlap, so that the compiler vectorizes it.
template <typename Predict>
void Subtract(const std::uint8_t* __restrict row, const std::uint8_t* __restrict left,
              const std::uint8_t* __restrict above, const std::uint8_t* __restrict upper_left, std::size_t size,
              std::uint8_t* __restrict out, Predict&& predict) noexcept {
    for (std::size_t n = 0; n < size; ++n) {
        out[n] = static_cast<std::uint8_t>(row[n] - predict(left[n], above[n], upper_left[n]));
    }
}

/// The predictor of PNG's filter 4, without branches.
constexpr auto kPaeth = [](std::int16_t left, std::int16_t above, std::int16_t upper_left) {
    const auto distance = [](int a, int b) { return static_cast<std::int16_t>(a > b ? a - b : b - a); };
    const std::int16_t to_left = distance(above, upper_left), to_above = distance(left, upper_left);
    const std::int16_t to_upper_left = distance(left + above, 2 * upper_left);
    const std::int16_t other = to_above <= to_upper_left ? above : upper_left;
    return to_left <= to_above && to_left <= to_upper_left ? left : other;
};

/// Sum of the magnitudes of signed bytes.
std::uint32_t Magnitude(std::span<const std::uint8_t> bytes) noexcept {
    std::uint32_t sum = 0;
    for (const std::uint8_t byte : bytes) {
        const auto negative = static_cast<std::uint8_t>(-byte);
        sum += byte < negative ? byte : negative;
    }
    return sum;
}

/// Sum of the four channels' differences that counts as much.
constexpr int kLargeChange = 24;

int Change(const Rgba& a, const Rgba& b) noexcept {
    return std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue) +
           std::abs(a.alpha - b.alpha);
}

/// Four pixels, which the compiler processes in one vector register where there is one.
using FourPixels [[gnu::vector_size(16)]] = std::uint8_t;
using FourNumbers [[gnu::vector_size(16)]] = std::int32_t;
constexpr std::size_t kPixelsAtOnce = 4;

FourPixels LoadPixels(const Rgba* pixels) noexcept {
    FourPixels four;
    std::memcpy(&four, pixels, sizeof four);
    return four;
}

/// As the other one, for each of four pixels.
FourNumbers Change(FourPixels a, FourPixels b) noexcept {
    const FourPixels larger = a > b ? a : b, smaller = a > b ? b : a;
    const auto channels = std::bit_cast<FourNumbers>(larger - smaller);
    const FourNumbers pairs = (channels & 0xFF00FF) + (channels >> 8 & 0xFF00FF);
    return (pairs & 0xFFFF) + (pairs >> 16);
}

}  // namespace

RowChanges ChangesOf(std::span<const Rgba> row, std::span<const Rgba> above) noexcept {
    RowChanges changes;
    std::size_t x = 1;
    FourNumbers gradual{}, from_left{}, from_above{};
    for (; x + kPixelsAtOnce <= row.size(); x += kPixelsAtOnce) {
        const FourPixels four = LoadPixels(&row[x]);
        const FourNumbers left = Change(four, LoadPixels(&row[x - 1])), up = Change(four, LoadPixels(&above[x]));
        const FourNumbers least = left < up ? left : up;
        gradual -= (least != 0) & (least < kLargeChange);  // true is -1
        from_left += left;
        from_above += up;
    }
    for (std::size_t n = 0; n < kPixelsAtOnce; ++n) changes += {gradual[n], from_left[n], from_above[n]};
    for (; x < row.size(); ++x) {
        const int left = Change(row[x], row[x - 1]), up = Change(row[x], above[x]), least = std::min(left, up);
        changes += {least != 0 && least < kLargeChange ? 1 : 0, left, up};
    }
    return changes;
}

void CopySamples(std::span<const Rgba> pixels, PngColourType type, std::uint8_t* out) noexcept {
    if (type == PngColourType::kColourAndAlpha) {
        std::memcpy(out, pixels.data(), pixels.size_bytes());
    } else if (type == PngColourType::kColour) {
        for (const Rgba& pixel : pixels) {
            *out++ = pixel.red;
            *out++ = pixel.green;
            *out++ = pixel.blue;
        }
    } else {
        for (const Rgba& pixel : pixels) *out++ = pixel.alpha;
    }
}

bool HasZeroSamples(std::span<const Rgba> pixels, PngColourType type) noexcept {
    const Rgba mask = type == PngColourType::kColour ? Rgba{255, 255, 255, 0}
                      : type == PngColourType::kGrey ? Rgba{0, 0, 0, 255}
                                                     : Rgba{255, 255, 255, 255};
    const auto bits = std::bit_cast<std::uint32_t>(mask);
    const auto any_of = [](const Rgba* block, std::size_t count) {
        std::uint32_t any = 0;
        for (std::size_t n = 0; n < count; ++n) any |= std::bit_cast<std::uint32_t>(block[n]);
        return any;
    };
    // Blocks of a constant size become the widest operations of the processor.
    constexpr std::size_t kBlock = 64;
    for (; pixels.size() >= kBlock; pixels = pixels.subspan(kBlock)) {
        if ((any_of(pixels.data(), kBlock) & bits) != 0) return false;
    }
    return (any_of(pixels.data(), pixels.size()) & bits) == 0;
}

void FilterRow(PngFilter filter, std::span<const std::uint8_t> row, std::span<const std::uint8_t> above, int samples,
               std::uint8_t* out) noexcept {
    const std::size_t step = std::min(static_cast<std::size_t>(samples), row.size());
    const auto subtract = [&](auto&& predict) {
        // The first pixel has none to its left.
        static constexpr std::uint8_t kNone[kMaxSamples] = {};
        Subtract(row.data(), kNone, above.data(), kNone, step, out, predict);
        Subtract(row.data() + step, row.data(), above.data() + step, above.data(), row.size() - step, out + step,
                 predict);
    };
    *out++ = static_cast<std::uint8_t>(filter);
    using Sample = std::int16_t;
    switch (filter) {
        case PngFilter::kNone:
            std::memcpy(out, row.data(), row.size());
            break;
        case PngFilter::kLeft:
            subtract([](Sample left, Sample, Sample) { return left; });
            break;
        case PngFilter::kAbove:
            subtract([](Sample, Sample up, Sample) { return up; });
            break;
        case PngFilter::kMean:
            subtract([](Sample left, Sample up, Sample) { return (left + up) / 2; });
            break;
        case PngFilter::kNearest:
            subtract(kPaeth);
            break;
    }
}

void BestPngFilter::Filter(std::span<const std::uint8_t> row, std::span<const std::uint8_t> above,
                           std::uint8_t* out) noexcept {
    using enum PngFilter;
    std::uint32_t least = UINT32_MAX;
    for (const PngFilter filter : {kNone, kLeft, kAbove, kMean, kNearest}) {
        FilterRow(filter, row, above, m_samples, m_tried.data());
        const std::uint32_t magnitude = Magnitude(std::span(m_tried).subspan(1));
        if (magnitude >= least) continue;
        least = magnitude;
        std::memcpy(out, m_tried.data(), m_tried.size());
    }
}

}  // namespace zel::picture
