#include "module/font/format/samples.h"

#include <algorithm>
#include <cstdlib>

namespace zel::font {

std::uint8_t* AllocateSample(std::int16_t width, std::int16_t height) noexcept {
    const std::size_t size = static_cast<std::size_t>(std::max(SampleBytes(width, height), 1));
    return static_cast<std::uint8_t*>(std::calloc(size, 1));
}

}  // namespace zel::font
