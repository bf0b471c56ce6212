#include "base/deflate.h"

#include <memory>
#include <new>

#include <libdeflate.h>

namespace zel::base {

namespace {

/// Of libdeflate's levels, the fastest that compresses.
constexpr int kFastest = 1;

struct FreeCompressor {
    void operator()(libdeflate_compressor* compressor) const noexcept { libdeflate_free_compressor(compressor); }
};
struct FreeDecompressor {
    void operator()(libdeflate_decompressor* decompressor) const noexcept {
        libdeflate_free_decompressor(decompressor);
    }
};

}  // namespace

std::string Deflated(std::string_view bytes) {
    // Its memory is larger than most streams, so each thread keeps its own.
    thread_local const std::unique_ptr<libdeflate_compressor, FreeCompressor> compressor(
        libdeflate_alloc_compressor(kFastest));
    if (!compressor) throw std::bad_alloc();
    std::string stream(libdeflate_deflate_compress_bound(compressor.get(), bytes.size()), '\0');
    stream.resize(
        libdeflate_deflate_compress(compressor.get(), bytes.data(), bytes.size(), stream.data(), stream.size()));
    stream.shrink_to_fit();
    return stream;
}

std::optional<std::string> Inflated(std::string_view stream, std::size_t size) {
    thread_local const std::unique_ptr<libdeflate_decompressor, FreeDecompressor> decompressor(
        libdeflate_alloc_decompressor());
    if (!decompressor) throw std::bad_alloc();
    std::string bytes(size, '\0');
    const libdeflate_result result = libdeflate_deflate_decompress(decompressor.get(), stream.data(), stream.size(),
                                                                   bytes.data(), bytes.size(), nullptr);
    if (result != LIBDEFLATE_SUCCESS) return std::nullopt;
    return bytes;
}

}  // namespace zel::base
