#pragma once

#include "module/contract/records/font_memory.h"

namespace zel::font {

/// Result of reading the rows of a sample block.
enum class SampleOutcome { kRead = 0, kNoMemory, kShortRow };

/// Size of a sample's rows in bytes. A negative size can't be allocated.
constexpr std::int32_t SampleBytes(std::int16_t width, std::int16_t height) noexcept {
    return std::int32_t{width} * height;
}

/// Number of rows that a sample has in the file: 0 for a height of 0 or below.
constexpr std::int32_t SampleRows(std::int16_t height) noexcept {
    return height > 0 ? height : 0;
}

/// Allocates zeroed memory for the rows of one sample, at least one byte, with calloc.
/// @return null when out of memory.
std::uint8_t* AllocateSample(std::int16_t width, std::int16_t height) noexcept;

/// Allocates and reads the rows of both samples of a block, first then second. The legacy importer treats a row of
/// width 0 as one that can't be read, since a read of no bytes returns nothing; so it gives kShortRow.
/// @param first, second  receive width, height and rows. The caller frees the rows with std::free, even on failure.
/// @param left           number of bytes from the first row to the end of the file. A sample that is larger gives
///                       kShortRow before memory is allocated for it.
/// @param read_row       bool(std::uint8_t* row, std::size_t width): reads the next row; false for an incomplete one.
template <typename ReadRow>
SampleOutcome ReadSamples(const tag_samp_struct& samp, tag_graphic_rectangle& first, tag_graphic_rectangle& second,
                          std::uint64_t left, ReadRow&& read_row) {
    first.width = samp.width_a;
    first.height = samp.height_a;
    second.width = samp.width_b;
    second.height = samp.height_b;
    if (SampleBytes(first.width, first.height) < 0 || SampleBytes(second.width, second.height) < 0)
        return SampleOutcome::kNoMemory;
    for (tag_graphic_rectangle* sample : {&first, &second}) {
        const std::int32_t rows = SampleRows(sample->height);
        if (rows == 0) {
            sample->data = AllocateSample(0, 0);
            if (sample->data == nullptr) return SampleOutcome::kNoMemory;
            continue;
        }
        const std::uint64_t size = static_cast<std::uint64_t>(SampleBytes(sample->width, sample->height));
        if (size == 0 || size > left) return SampleOutcome::kShortRow;
        left -= size;
        sample->data = AllocateSample(sample->width, sample->height);
        if (sample->data == nullptr) return SampleOutcome::kNoMemory;
        const std::size_t width = static_cast<std::size_t>(sample->width);
        for (std::int32_t row = 0; row < rows; ++row) {
            if (!read_row(sample->data + static_cast<std::size_t>(row) * width, width)) return SampleOutcome::kShortRow;
        }
    }
    return SampleOutcome::kRead;
}

}  // namespace zel::font
