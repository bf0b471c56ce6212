#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace zel::live {

// Pixels of a glyph by rows, as bytes. A number has 7 bits a byte, the low ones first, and the top bit in each byte but
// its last. Clear pixels after the last other one are left out.

/// Pairs of a number of pixels and their class.
/// @param classes  of each pixel; 0 is a clear one.
std::string ClassStream(std::span<const std::uint32_t> classes);

/// Numbers n, each with pixels of four bytes: for an even n one that is repeated n / 2 times, for an odd n as many
/// as n / 2.
/// @param rgba  4 bytes a pixel; one of four zeros is clear.
std::string PixelStream(std::span<const std::uint8_t> rgba);

}  // namespace zel::live
