// The fast encoder by libpng, for processors without ISA-L.
#include <cstdio>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

#include <png.h>

#include "host/picture/fast_png.h"
#include "host/picture/png_file.h"
#include "host/picture/png_rows.h"

namespace zel::picture {

namespace {

/// Pictures of text have large areas of one colour: a higher level takes time and saves hardly any bytes.
constexpr int kCompressionLevel = 2;

/// Data of an encoding. Allocated outside the function that the library leaves by longjmp.
struct Encoding {
    ConstPixelView pixels;
    PngForm form;
    std::string bytes;
    /// A row of the file.
    std::vector<png_byte> row;
    /// Why the encoding failed.
    char reason[200] = "out of memory";
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
    // An exception must not pass through the library, nor be active when the library jumps.
    if (!Append(static_cast<Encoding*>(png_get_io_ptr(png))->bytes, bytes, size)) png_error(png, "out of memory");
}

void OnPngFlush(png_structp /*png*/) {}

void WriteChunks(png_structp png, png_infop info, Encoding& encoding) {
    const ConstPixelView pixels = encoding.pixels;
    const PngHeader header = HeaderOf(pixels, encoding.form);
    png_set_IHDR(png, info, static_cast<png_uint_32>(header.width), static_cast<png_uint_32>(header.height), 8,
                 static_cast<int>(header.type), PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    // The chunk has pixels per unit of length: 11 across for 10 down when a pixel is 10 wide and 11 high.
    png_set_pHYs(png, info, static_cast<png_uint_32>(header.aspect.height),
                 static_cast<png_uint_32>(header.aspect.width), PNG_RESOLUTION_UNKNOWN);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_compression_level(png, kCompressionLevel);
    png_write_info(png, info);
    for (int y = 0; y < pixels.Height(); ++y) {
        CopySamples(pixels.Row(y), header.type, encoding.row.data());
        png_write_row(png, encoding.row.data());
    }
    png_write_end(png, info);
}

/// The library leaves by longjmp when it fails, so this function must not have objects with destructors.
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

std::string EncodeFastPng(const Picture& picture, PngForm form) {
    Encoding encoding{picture.View(), form, {}, {}};
    encoding.row.resize(PixelBytes(picture.width, 1));
    if (!Encode(encoding)) throw std::runtime_error(encoding.reason);
    return std::move(encoding.bytes);
}

}  // namespace zel::picture
