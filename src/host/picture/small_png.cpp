#include "host/picture/small_png.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <stdexcept>
#include <unordered_map>
#include <vector>

#include <libdeflate.h>

#include "host/picture/png_file.h"
#include "host/picture/png_rows.h"

namespace zel::picture {

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kMaxPalette = 256;

/// The picture as a file shows it: without alpha, or its alpha as grey.
std::vector<Rgba> ShownPixels(ConstPixelView view, PngChannels channels) {
    std::vector<Rgba> pixels;
    pixels.reserve(static_cast<std::size_t>(view.Width()) * static_cast<std::size_t>(view.Height()));
    for (int y = 0; y < view.Height(); ++y) {
        const auto row = view.Row(y);
        pixels.insert(pixels.end(), row.begin(), row.end());
    }
    for (Rgba& pixel : pixels) {
        if (channels == PngChannels::kAlpha) pixel = {pixel.alpha, pixel.alpha, pixel.alpha, 255};
        if (channels == PngChannels::kColour) pixel.alpha = 255;
    }
    return pixels;
}

std::uint32_t KeyOf(const Rgba& pixel) noexcept {
    std::uint32_t key = 0;
    std::memcpy(&key, &pixel, sizeof key);
    return key;
}

/// The colours of a picture, those with alpha first; nothing if there are more than a palette has.
std::optional<std::vector<Rgba>> PaletteOf(const std::vector<Rgba>& pixels) {
    std::unordered_map<std::uint32_t, Rgba> colours;
    for (const Rgba& pixel : pixels) {
        colours.try_emplace(KeyOf(pixel), pixel);
        if (colours.size() > kMaxPalette) return std::nullopt;
    }
    std::vector<Rgba> palette;
    for (const auto& [key, colour] : colours) palette.push_back(colour);
    // Entries beyond the last one with alpha need no alpha. The rest of the order makes the file reproducible.
    std::ranges::sort(palette, {}, [](const Rgba& colour) {
        return std::tuple(colour.alpha == 255, colour.alpha, colour.red, colour.green, colour.blue);
    });
    return palette;
}

/// The samples of the whole picture, without filters.
struct Samples {
    PngColourType type;
    Bytes bytes;
};

Samples PaletteSamples(const std::vector<Rgba>& pixels, const std::vector<Rgba>& palette) {
    std::unordered_map<std::uint32_t, std::uint8_t> entries;
    for (std::size_t n = 0; n < palette.size(); ++n) {
        entries.emplace(KeyOf(palette[n]), static_cast<std::uint8_t>(n));
    }
    Samples samples{PngColourType::kPalette, {}};
    samples.bytes.reserve(pixels.size());
    for (const Rgba& pixel : pixels) samples.bytes.push_back(entries.at(KeyOf(pixel)));
    return samples;
}

Samples DirectSamples(const std::vector<Rgba>& pixels) {
    const bool opaque = std::ranges::all_of(pixels, [](const Rgba& pixel) { return pixel.alpha == 255; });
    const bool grey = std::ranges::all_of(
        pixels, [](const Rgba& pixel) { return pixel.red == pixel.green && pixel.green == pixel.blue; });
    const PngColourType type = grey     ? opaque ? PngColourType::kGrey : PngColourType::kGreyAndAlpha
                               : opaque ? PngColourType::kColour
                                        : PngColourType::kColourAndAlpha;
    Samples samples{type, {}};
    samples.bytes.reserve(pixels.size() * static_cast<std::size_t>(SamplesOf(type)));
    for (const Rgba& pixel : pixels) {
        samples.bytes.push_back(pixel.red);
        if (!grey) samples.bytes.insert(samples.bytes.end(), {pixel.green, pixel.blue});
        if (!opaque) samples.bytes.push_back(pixel.alpha);
    }
    return samples;
}

struct FreeCompressor {
    void operator()(libdeflate_compressor* compressor) const noexcept { libdeflate_free_compressor(compressor); }
};

class SmallZlib {
  public:
    SmallZlib() : m_compressor(libdeflate_alloc_compressor(kStrongest)) {
        if (m_compressor == nullptr) throw std::bad_alloc();
    }

    /// Compresses, and keeps the result if it is the shortest one.
    void Try(const Bytes& rows) {
        Bytes out(libdeflate_zlib_compress_bound(m_compressor.get(), rows.size()));
        const std::size_t size =
            libdeflate_zlib_compress(m_compressor.get(), rows.data(), rows.size(), out.data(), out.size());
        if (size == 0) throw std::runtime_error("the rows could not be compressed");
        out.resize(size);
        if (m_shortest.empty() || size < m_shortest.size()) m_shortest = std::move(out);
    }

    const Bytes& Shortest() const noexcept { return m_shortest; }

  private:
    static constexpr int kStrongest = 12;

    std::unique_ptr<libdeflate_compressor, FreeCompressor> m_compressor;
    Bytes m_shortest;
};

/// The rows as a file has them, unfiltered or each by the best of all.
Bytes RowsOf(const Samples& samples, int width, bool filtered) {
    const std::size_t row_samples = PngRowBytes(width, samples.type) - 1;
    if (row_samples == 0) return {};
    Bytes rows(samples.bytes.size() / row_samples * (row_samples + 1));
    BestPngFilter best(row_samples, SamplesOf(samples.type));
    const Bytes zeros(row_samples);
    std::span<const std::uint8_t> above = zeros;
    std::uint8_t* out = rows.data();
    for (std::size_t start = 0; start < samples.bytes.size(); start += row_samples, out += row_samples + 1) {
        const auto row = std::span(samples.bytes).subspan(start, row_samples);
        if (filtered) {
            best.Filter(row, above, out);
        } else {
            FilterRow(PngFilter::kNone, row, above, 0, out);
        }
        above = row;
    }
    return rows;
}

}  // namespace

std::string EncodeSmallPng(const Picture& picture, PngForm form) {
    const ConstPixelView view = picture.View();
    const std::vector<Rgba> pixels = ShownPixels(view, form.channels);
    const std::optional<std::vector<Rgba>> palette = PaletteOf(pixels);
    const Samples samples = palette ? PaletteSamples(pixels, *palette) : DirectSamples(pixels);
    SmallZlib zlib;
    zlib.Try(RowsOf(samples, view.Width(), false));
    if (!palette) zlib.Try(RowsOf(samples, view.Width(), true));
    PngHeader header = HeaderOf(view, form);
    header.type = samples.type;
    return PngFile(header, palette.value_or(std::vector<Rgba>()), zlib.Shortest());
}

}  // namespace zel::picture
