#include "host/live/glyph_stream.h"

#include <cstddef>
#include <cstring>
#include <vector>

namespace zel::live {

namespace {

/// Equal pixels that are worth a run of their own, at 4 bytes a pixel and 2 or 3 for the numbers.
constexpr std::size_t kShortestRun = 3;

void AppendNumber(std::string& stream, std::uint64_t number) {
    for (; number >= 0x80; number >>= 7) stream += static_cast<char>(number | 0x80);
    stream += static_cast<char>(number);
}

std::size_t RunAt(std::span<const std::uint32_t> pixels, std::size_t at) noexcept {
    std::size_t end = at + 1;
    while (end < pixels.size() && pixels[end] == pixels[at]) ++end;
    return end - at;
}

std::span<const std::uint32_t> WithoutClearEnd(std::span<const std::uint32_t> pixels) noexcept {
    while (!pixels.empty() && pixels.back() == 0) pixels = pixels.first(pixels.size() - 1);
    return pixels;
}

void AppendPixels(std::string& stream, std::span<const std::uint32_t> pixels) {
    stream.append(reinterpret_cast<const char*>(pixels.data()), pixels.size_bytes());
}

}  // namespace

std::string ClassStream(std::span<const std::uint32_t> classes) {
    std::string stream;
    classes = WithoutClearEnd(classes);
    for (std::size_t at = 0, run = 0; at < classes.size(); at += run) {
        run = RunAt(classes, at);
        AppendNumber(stream, run);
        AppendNumber(stream, classes[at]);
    }
    return stream;
}

std::string PixelStream(std::span<const std::uint8_t> rgba) {
    std::vector<std::uint32_t> words(rgba.size() / 4);
    std::memcpy(words.data(), rgba.data(), words.size() * 4);
    const std::span<const std::uint32_t> pixels = WithoutClearEnd(words);
    std::string stream;
    for (std::size_t at = 0; at < pixels.size();) {
        if (const std::size_t run = RunAt(pixels, at); run >= kShortestRun) {
            AppendNumber(stream, run * 2);
            AppendPixels(stream, pixels.subspan(at, 1));
            at += run;
            continue;
        }
        std::size_t end = at;
        while (end < pixels.size()) {
            const std::size_t run = RunAt(pixels, end);
            if (run >= kShortestRun) break;
            end += run;
        }
        AppendNumber(stream, (end - at) * 2 + 1);
        AppendPixels(stream, pixels.subspan(at, end - at));
        at = end;
    }
    return stream;
}

}  // namespace zel::live
