#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "host/picture/pixel_view.h"
#include "host/picture/png_writer.h"
#include "module/contract/records/video_standard.h"

/// The bytes of a PNG file around its compressed pixels.
namespace zel::picture {

/// The colour types of PNG that are written, with 8 bits a sample.
enum class PngColourType : std::uint8_t {
    kGrey = 0,
    kColour = 2,
    kPalette = 3,
    kGreyAndAlpha = 4,
    kColourAndAlpha = 6
};

/// Bytes of a pixel.
constexpr int SamplesOf(PngColourType type) noexcept {
    constexpr int kSamples[] = {1, 0, 3, 1, 2, 0, 4};
    return kSamples[static_cast<int>(type)];
}

/// The colour type that holds exactly these channels.
constexpr PngColourType ColourTypeOf(PngChannels channels) noexcept {
    if (channels == PngChannels::kAlpha) return PngColourType::kGrey;
    return channels == PngChannels::kColour ? PngColourType::kColour : PngColourType::kColourAndAlpha;
}

struct PngHeader {
    int width = 0, height = 0;
    PngColourType type = PngColourType::kColourAndAlpha;
    /// None for a file without pHYs.
    std::optional<PixelAspect> aspect{};
};

PngHeader HeaderOf(ConstPixelView pixels, PngForm form) noexcept;

/// A whole PNG file.
/// @param palette  the colours of a file of colour type kPalette, at most 256.
/// @param zlib     the compressed rows, each after the byte of its filter.
std::string PngFile(const PngHeader& header, std::span<const Rgba> palette, std::span<const std::uint8_t> zlib);

}  // namespace zel::picture
