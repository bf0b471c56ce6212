#include "host/fontkit/kit_png.h"

#include <memory>
#include <new>
#include <stdexcept>
#include <vector>

#include <libdeflate.h>

#include "host/picture/png_file.h"
#include "host/picture/png_rows.h"

namespace zel::fontkit {

namespace {

constexpr int kCompressionLevel = 6;

struct FreeCompressor {
    void operator()(libdeflate_compressor* compressor) const noexcept { libdeflate_free_compressor(compressor); }
};

}  // namespace

std::string KitPng(const picture::Picture& picture, KitPngType type) {
    const picture::ConstPixelView view = picture.View();
    const picture::PngHeader header{
        view.Width(), view.Height(),
        type == KitPngType::kGrey ? picture::PngColourType::kGrey : picture::PngColourType::kColourAndAlpha};
    const std::size_t row_bytes = picture::PngRowBytes(view.Width(), header.type);
    // The byte before the samples of a row is that of its filter: none.
    std::vector<std::uint8_t> rows(row_bytes * static_cast<std::size_t>(view.Height()));
    std::uint8_t* out = rows.data() + 1;
    for (int y = 0; y < view.Height(); ++y, out += row_bytes) picture::CopySamples(view.Row(y), header.type, out);
    const std::unique_ptr<libdeflate_compressor, FreeCompressor> compressor(
        libdeflate_alloc_compressor(kCompressionLevel));
    if (!compressor) throw std::bad_alloc();
    std::vector<std::uint8_t> zlib(libdeflate_zlib_compress_bound(compressor.get(), rows.size()));
    const std::size_t size =
        libdeflate_zlib_compress(compressor.get(), rows.data(), rows.size(), zlib.data(), zlib.size());
    if (size == 0) throw std::runtime_error("a page could not be compressed");
    zlib.resize(size);
    return picture::PngFile(header, {}, zlib);
}

}  // namespace zel::fontkit
