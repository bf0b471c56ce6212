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

/// How the pixels of rows, without the first of each, differ from their neighbours, in the sum of the four channels.
struct RowChanges {
    /// Pixels that differ a little from the neighbour that they differ less from.
    int gradual = 0;
    /// Sums of the differences from the pixel to the left and from the one above.
    std::int64_t from_left = 0, from_above = 0;

    RowChanges& operator+=(const RowChanges& more) noexcept {
        gradual += more.gradual;
        from_left += more.from_left;
        from_above += more.from_above;
        return *this;
    }
};

/// @param above  as many pixels as the row has, which are at most 32,767.
RowChanges ChangesOf(std::span<const Rgba> row, std::span<const Rgba> above) noexcept;

/// The filters of PNG, with their numbers in a file: what a sample is predicted to be. The difference is stored.
enum class PngFilter : std::uint8_t {
    kNone,
    /// That of the pixel to the left.
    kLeft,
    /// That of the pixel above.
    kAbove,
    /// The mean of these two.
    kMean,
    /// The nearest of these two and the one above to the left, by PNG's Paeth predictor.
    kNearest
};

/// Filters a row and writes it, the byte of the filter first.
/// @param row      the samples of the row.
/// @param above    those of the row above; zeros for the first row of the picture.
/// @param samples  bytes of a pixel.
/// @param out      one byte more than the row has.
void FilterRow(PngFilter filter, std::span<const std::uint8_t> row, std::span<const std::uint8_t> above, int samples,
               std::uint8_t* out) noexcept;

/// Filters single rows, each by the filter whose result has the smallest sum of magnitudes. That suits gradual changes
/// of colour.
class BestPngFilter {
  public:
    /// @param samples  bytes of a pixel.
    BestPngFilter(std::size_t row_samples, int samples) : m_samples(samples), m_tried(row_samples + 1) {}

    /// As FilterRow.
    void Filter(std::span<const std::uint8_t> row, std::span<const std::uint8_t> above, std::uint8_t* out) noexcept;

  private:
    int m_samples;
    /// The row by one of the filters.
    std::vector<std::uint8_t> m_tried;
};

}  // namespace zel::picture
