#include "host/picture/png_file.h"

#include <string_view>

#include <libdeflate.h>

#include "host/picture/picture.h"

namespace zel::picture {

namespace {

void AppendNumber(std::string& bytes, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
}

/// Appends a chunk: length, type, data and the checksum of type and data.
void AppendChunk(std::string& bytes, std::string_view type, std::string_view data) {
    AppendNumber(bytes, static_cast<std::uint32_t>(data.size()));
    const std::size_t start = bytes.size();
    bytes.append(type).append(data);
    AppendNumber(bytes, libdeflate_crc32(0, bytes.data() + start, bytes.size() - start));
}

std::string HeaderData(const PngHeader& header) {
    std::string data;
    AppendNumber(data, static_cast<std::uint32_t>(header.width));
    AppendNumber(data, static_cast<std::uint32_t>(header.height));
    constexpr char kBitsPerSample = 8, kDeflate = 0, kAdaptiveFilters = 0, kNotInterlaced = 0;
    data += {kBitsPerSample, static_cast<char>(header.type), kDeflate, kAdaptiveFilters, kNotInterlaced};
    return data;
}

std::string AspectData(PixelAspect aspect) {
    std::string data;
    // The chunk has pixels per unit of length: 11 across for 10 down when a pixel is 10 wide and 11 high.
    AppendNumber(data, static_cast<std::uint32_t>(aspect.height));
    AppendNumber(data, static_cast<std::uint32_t>(aspect.width));
    constexpr char kUnknownUnit = 0;
    return data += kUnknownUnit;
}

void AppendPalette(std::string& bytes, std::span<const Rgba> palette) {
    std::string colours, alphas;
    for (const Rgba& colour : palette) {
        for (const std::uint8_t sample : {colour.red, colour.green, colour.blue}) colours += static_cast<char>(sample);
        alphas += static_cast<char>(colour.alpha);
    }
    // Entries beyond the last alpha are opaque.
    alphas.resize(alphas.find_last_not_of('\xFF') + 1);
    AppendChunk(bytes, "PLTE", colours);
    if (!alphas.empty()) AppendChunk(bytes, "tRNS", alphas);
}

}  // namespace

PngHeader HeaderOf(ConstPixelView pixels, PngForm form) noexcept {
    const PixelAspect aspect = form.shape == PixelShape::kSquare ? PixelAspect() : VideoAspect(pixels.Height());
    PngHeader header{pixels.Width(), pixels.Height(), ColourTypeOf(form.channels)};
    if (form.aspect_chunk == AspectChunk::kPng) header.aspect = aspect;
    if (form.aspect_chunk == AspectChunk::kFfmpeg) header.aspect = PixelAspect{aspect.height, aspect.width};
    return header;
}

std::string PngFile(const PngHeader& header, std::span<const Rgba> palette, std::span<const std::uint8_t> zlib) {
    constexpr std::size_t kAroundPixels = 128;  // signature and the chunks without palette and pixels
    std::string bytes;
    bytes.reserve(kAroundPixels + palette.size() * sizeof(Rgba) + zlib.size());
    bytes = "\x89PNG\r\n\x1A\n";
    AppendChunk(bytes, "IHDR", HeaderData(header));
    if (header.aspect) AppendChunk(bytes, "pHYs", AspectData(*header.aspect));
    if (header.type == PngColourType::kPalette) AppendPalette(bytes, palette);
    AppendChunk(bytes, "IDAT", {reinterpret_cast<const char*>(zlib.data()), zlib.size()});
    AppendChunk(bytes, "IEND", {});
    return bytes;
}

}  // namespace zel::picture
