#include "host/png_writer.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <png.h>

namespace {

/// Text pictures are flat: a higher level costs time and saves next to nothing.
constexpr int kCompressionLevel = 2;

/// Pixels per unit of length that give a pixel its shape; only their ratio counts.
struct PixelDensity {
    png_uint_32 x, y;
};

/// A pixel that is 10 wide and 11 high lies 11 times across where it lies 10 times down.
constexpr PixelDensity DensityOf(int height) noexcept {
    return height == 576 ? PixelDensity{11, 12} : PixelDensity{11, 10};
}

struct CloseFile {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void Fail(const std::filesystem::path& file, const std::string& reason) {
    throw std::runtime_error(file.string() + ": could not be written: " + reason);
}

void OnPngError(png_structp png, png_const_charp text) {
    std::snprintf(static_cast<char*>(png_get_error_ptr(png)), 200, "%s", text);
    png_longjmp(png, 1);
}

void OnPngWarning(png_structp /*png*/, png_const_charp /*text*/) {}

void WriteChunks(png_structp png, png_infop info, const Picture& picture) {
    const PixelDensity density = DensityOf(picture.height);
    png_set_IHDR(png, info, static_cast<png_uint_32>(picture.width), static_cast<png_uint_32>(picture.height), 8,
                 PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_pHYs(png, info, density.x, density.y, PNG_RESOLUTION_UNKNOWN);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_compression_level(png, kCompressionLevel);
    png_write_info(png, info);
    const std::size_t row_size = static_cast<std::size_t>(picture.width) * 4;
    for (int row = 0; row < picture.height; ++row) {
        png_write_row(png, picture.rgba.data() + static_cast<std::size_t>(row) * row_size);
    }
    png_write_end(png, info);
}

/// The library leaves by longjmp when it fails, so nothing that wants destroying may live in this function.
bool Encode(std::FILE* file, const Picture& picture, char* reason) {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, reason, OnPngError, OnPngWarning);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    if (info == nullptr) {
        png_destroy_write_struct(&png, nullptr);
        return false;
    }
    if (setjmp(png_jmpbuf(png)) != 0) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_init_io(png, file);
    WriteChunks(png, info, picture);
    png_destroy_write_struct(&png, &info);
    return true;
}

/// @param file  what the user asked for, which is what an error names.
void WritePart(const std::filesystem::path& part, const std::filesystem::path& file, const Picture& picture) {
    FileHandle out(std::fopen(part.c_str(), "wb"));
    if (!out) Fail(file, std::strerror(errno));
    char reason[200] = "out of memory";
    errno = 0;
    if (!Encode(out.get(), picture, reason)) Fail(file, errno != 0 ? std::strerror(errno) : reason);
    if (std::fclose(out.release()) != 0) Fail(file, std::strerror(errno));
}

}  // namespace

void WritePng(const std::filesystem::path& file, const Picture& picture) {
    const std::filesystem::path part = file.string() + ".part";
    try {
        WritePart(part, file, picture);
        std::error_code error;
        std::filesystem::rename(part, file, error);
        if (error) Fail(file, error.message());
    } catch (const std::runtime_error&) {
        std::error_code ignored;
        std::filesystem::remove(part, ignored);
        throw;
    }
}
