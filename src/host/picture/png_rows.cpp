#include "host/picture/png_rows.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

namespace zel::picture {

namespace {

/// The predictor of PNG's filter 4.
std::uint8_t Paeth(int left, int above, int upper_left) noexcept {
    const int to_left = std::abs(above - upper_left), to_above = std::abs(left - upper_left);
    const int to_upper_left = std::abs(left + above - 2 * upper_left);
    if (to_left <= to_above && to_left <= to_upper_left) return static_cast<std::uint8_t>(left);
    return static_cast<std::uint8_t>(to_above <= to_upper_left ? above : upper_left);
}

/// Sum of the magnitudes of signed bytes.
std::size_t Magnitude(std::span<const std::uint8_t> bytes) noexcept {
    std::size_t sum = 0;
    for (const std::uint8_t byte : bytes) sum += byte < 128 ? byte : 256U - byte;
    return sum;
}

}  // namespace

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
    // In blocks, which the compiler turns into the widest operations of the processor.
    constexpr std::size_t kBlock = 64;
    while (!pixels.empty()) {
        const auto block = pixels.first(std::min(kBlock, pixels.size()));
        std::uint32_t any = 0;
        for (const Rgba& pixel : block) any |= std::bit_cast<std::uint32_t>(pixel);
        if ((any & bits) != 0) return false;
        pixels = pixels.subspan(block.size());
    }
    return true;
}

PngFilter::PngFilter(std::size_t row_samples, int samples) : m_samples(samples) {
    for (auto& filtered : m_filtered) filtered.resize(row_samples);
}

void PngFilter::Filter(std::span<const std::uint8_t> row, std::span<const std::uint8_t> above,
                       std::uint8_t* out) noexcept {
    auto& [none, sub, up, average, paeth] = m_filtered;
    const std::size_t step = static_cast<std::size_t>(m_samples);
    for (std::size_t n = 0; n < row.size(); ++n) {
        const std::uint8_t left = n < step ? std::uint8_t{0} : row[n - step];
        const std::uint8_t upper_left = n < step ? std::uint8_t{0} : above[n - step];
        none[n] = row[n];
        sub[n] = static_cast<std::uint8_t>(row[n] - left);
        up[n] = static_cast<std::uint8_t>(row[n] - above[n]);
        average[n] = static_cast<std::uint8_t>(row[n] - (left + above[n]) / 2);
        paeth[n] = static_cast<std::uint8_t>(row[n] - Paeth(left, above[n], upper_left));
    }
    const auto* best = std::ranges::min_element(m_filtered, {}, [](const auto& bytes) { return Magnitude(bytes); });
    *out = static_cast<std::uint8_t>(best - m_filtered);
    std::memcpy(out + 1, best->data(), row.size());
}

}  // namespace zel::picture
