#pragma once

#include <cstdint>
#include <span>

#include "base/instructions.h"
#include "host/picture/pixel.h"

namespace zel::picture {

/// One way to blend a row of the module's pixels over those of a picture, see Over. All ways give the same pixels.
struct BgraRowPath {
    const char* name;
    base::Instructions needs;
    /// @param source  blue, green, red and alpha of as many pixels as `pixels` has.
    void (*blend)(const std::uint8_t* source, std::span<Rgba> pixels) noexcept;
};

/// Those that the processor supports, the fastest first.
std::span<const BgraRowPath> BgraRowPaths() noexcept;

}  // namespace zel::picture
