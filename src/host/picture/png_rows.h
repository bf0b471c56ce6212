#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "host/picture/pixel_view.h"
#include "host/picture/png_file.h"

/// The rows of a PNG file before they are compressed: the byte of the filter, then the samples.
namespace zel::picture {

/// Bytes of a row of the file, with that of the filter.
constexpr std::size_t PngRowBytes(int width, PngColourType type) noexcept {
    return 1 + static_cast<std::size_t>(width) * static_cast<std::size_t>(SamplesOf(type));
}

/// Copies the samples of pixels in one of the forms of PngChannels.
/// @param out  SamplesOf(type) bytes for each pixel.
void CopySamples(std::span<const Rgba> pixels, PngColourType type, std::uint8_t* out) noexcept;

/// Whether all samples of pixels are 0.
bool HasZeroSamples(std::span<const Rgba> pixels, PngColourType type) noexcept;

/// Number of pixels of a row, without the first, that differ a little from the pixel to the left or the one above: from
/// the one that they differ less from, in the sum of the four channels.
/// @param above  as many pixels as the row has.
int CountGradual(std::span<const Rgba> row, std::span<const Rgba> above) noexcept;

enum class PngFilters {
    /// None, left and above: quick, and the better ones for a quick compressor.
    kSimple,
    /// All five.
    kAll,
};

/// Filters of single rows. Each row gets the filter whose result has the smallest sum of magnitudes, which suits
/// gradual changes of colour.
class PngFilter {
  public:
    /// @param samples  bytes of a pixel.
    PngFilter(std::size_t row_samples, int samples, PngFilters filters);

    /// Filters a row and writes it, the byte of the filter first.
    /// @param row    the samples of the row.
    /// @param above  those of the row above; zeros for the first row of the picture.
    void Filter(std::span<const std::uint8_t> row, std::span<const std::uint8_t> above, std::uint8_t* out) noexcept;

  private:
    int m_samples;
    /// The row by each of the filters, in the order of their numbers.
    std::vector<std::vector<std::uint8_t>> m_filtered;
};

}  // namespace zel::picture
