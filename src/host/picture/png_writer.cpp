#include "host/picture/png_writer.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <utility>
#include <vector>

#include <png.h>

#include "base/whole_file.h"

namespace zel::picture {

namespace {

/// Text pictures are flat: a higher level costs time and saves next to nothing.
constexpr int kCompressionLevel = 2;

/// Pixels per unit of length that give a pixel its shape; only their ratio counts.
struct PixelDensity {
    png_uint_32 x, y;
};

/// A pixel that is 10 wide and 11 high lies 11 times across where it lies 10 times down.
constexpr PixelDensity DensityOf(PixelShape shape, int height) noexcept {
    if (shape == PixelShape::kSquare) return {1, 1};
    return height == 576 ? PixelDensity{11, 12} : PixelDensity{11, 10};
}

constexpr int ColourType(PngChannels channels) noexcept {
    if (channels == PngChannels::kAlpha) return PNG_COLOR_TYPE_GRAY;
    return channels == PngChannels::kColour ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA;
}

/// What an encoding works on. It lies outside the function that the library leaves by longjmp.
struct Encoding {
    const Picture& picture;
    PngForm form;
    std::string bytes;
    std::vector<png_byte> row;           ///< used when the file holds less than the picture.
    char reason[200] = "out of memory";  ///< of a failure.
};

void OnPngError(png_structp png, png_const_charp text) {
    auto* encoding = static_cast<Encoding*>(png_get_error_ptr(png));
    std::snprintf(encoding->reason, sizeof encoding->reason, "%s", text);
    png_longjmp(png, 1);
}

void OnPngWarning(png_structp /*png*/, png_const_charp /*text*/) {}

bool Append(std::string& bytes, png_bytep more, std::size_t size) noexcept {
    try {
        bytes.append(reinterpret_cast<const char*>(more), size);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void OnPngBytes(png_structp png, png_bytep bytes, std::size_t size) {
    // No exception may pass through the library, and none may be under way when it jumps.
    if (!Append(static_cast<Encoding*>(png_get_io_ptr(png))->bytes, bytes, size)) png_error(png, "out of memory");
}

void OnPngFlush(png_structp /*png*/) {}

/// The row as the file holds it.
const png_byte* FileRow(Encoding& encoding, int index) noexcept {
    const std::size_t width = static_cast<std::size_t>(encoding.picture.width);
    const png_byte* pixels = encoding.picture.rgba.data() + static_cast<std::size_t>(index) * width * 4;
    if (encoding.row.empty()) return pixels;
    png_byte* out = encoding.row.data();
    for (std::size_t n = 0; n < width; ++n, pixels += 4) {
        if (encoding.form.channels == PngChannels::kAlpha) {
            *out++ = pixels[3];
        } else {
            out = std::copy_n(pixels, 3, out);
        }
    }
    return encoding.row.data();
}

void WriteChunks(png_structp png, png_infop info, Encoding& encoding) {
    const Picture& picture = encoding.picture;
    const PixelDensity density = DensityOf(encoding.form.shape, picture.height);
    png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width), static_cast<png_uint_32>(picture.height), 8,
                 ColourType(encoding.form.channels), PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(png, info, density.x, density.y, PNG_RESOLUTION_UNKNOWN);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_compression_level(png, kCompressionLevel);
    png_write_info(png, info);
    for (int row = 0; row < picture.height; ++row) png_write_row(png, FileRow(encoding, row));
    png_write_end(png, info);
}

/// The library leaves by longjmp when it fails, so nothing that wants destroying may live in this function.
bool Encode(Encoding& encoding) {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &encoding, OnPngError, OnPngWarning);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    if (info == nullptr) {
        png_destroy_write_struct(&png, nullptr);
        return false;
    }
    if (setjmp(png_jmpbuf(png)) != 0) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_set_write_fn(png, &encoding, OnPngBytes, OnPngFlush);
    WriteChunks(png, info, encoding);
    png_destroy_write_struct(&png, &info);
    return true;
}

}  // namespace

std::string EncodePng(const Picture& picture, PngForm form) {
    Encoding encoding{picture, form, {}, {}};
    const std::size_t width = picture.width > 0 ? static_cast<std::size_t>(picture.width) : 0;
    if (form.channels != PngChannels::kColourAndAlpha) encoding.row.resize(width * 3);
    if (!Encode(encoding)) throw std::runtime_error(std::string("no PNG could be made: ") + encoding.reason);
    return std::move(encoding.bytes);
}

void WritePng(const std::filesystem::path& file, const Picture& picture) {
    std::string bytes;
    try {
        bytes = EncodePng(picture);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(file.string() + ": could not be written: " + error.what());
    }
    base::WriteWholeFile(file, bytes);
}

}  // namespace zel::picture
