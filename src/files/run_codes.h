#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "files/byte_writer.h"

/// Run codes: the glyphs of a font's encoding data, as 32-bit words, big-endian in the file. Bit 31: stay; bits 23 to
/// 16: colour index; 15 to 8: level; 7 to 3: 32 minus the count; 1 to 0: the operation.
namespace zel::files {

using RunCodes = std::vector<std::uint32_t>;

enum class RunOperation : std::uint8_t { kBackground = 0, kColour = 1, kBlended = 2, kEndOfLine = 3 };

/// Indexes of the face, edge and background colours in every colour set.
constexpr unsigned kFaceIndex = 1, kEdgeIndex = 2, kBackIndex = 3;

/// The most pixels of one run.
constexpr unsigned kLongestRun = 32;

/// Any code. Fields are truncated to their width; a count of 32 is stored as 0, as is a count of 0.
constexpr std::uint32_t RunCode(RunOperation operation, unsigned colour, unsigned level, unsigned count,
                                bool stay) noexcept {
    return (stay ? 1U << 31 : 0U) | (colour & 0xFFU) << 16 | (level & 0xFFU) << 8 |
           ((kLongestRun - count) & 0x1FU) << 3 | static_cast<std::uint32_t>(operation);
}

/// A run of 1 to 32 pixels of the background. It has a colour index, which the operation ignores: without it, a run of
/// 32 would be the word 0, which ends the glyph.
constexpr std::uint32_t BackgroundRun(unsigned count) noexcept {
    return RunCode(RunOperation::kBackground, kBackIndex, 0, count, false);
}
/// A run of 1 to 32 pixels of a colour, which replaces what is drawn there.
constexpr std::uint32_t ColourRun(unsigned colour, unsigned level, unsigned count) noexcept {
    return RunCode(RunOperation::kColour, colour, level, count, false);
}
/// A run of 1 to 32 pixels of a colour, mixed once with the run's first pixel.
constexpr std::uint32_t BlendedRun(unsigned colour, unsigned level, unsigned count) noexcept {
    return RunCode(RunOperation::kBlended, colour, level, count, false);
}
/// Sets one pixel to a colour without moving on.
constexpr std::uint32_t Stay(unsigned colour, unsigned level) noexcept {
    return RunCode(RunOperation::kColour, colour, level, 1, true);
}
/// Mixes one pixel with a colour without moving on.
constexpr std::uint32_t BlendedStay(unsigned colour, unsigned level) noexcept {
    return RunCode(RunOperation::kBlended, colour, level, 1, true);
}
constexpr std::uint32_t EndOfLine() noexcept {
    return static_cast<std::uint32_t>(RunOperation::kEndOfLine);
}
constexpr std::uint32_t EndOfGlyph() noexcept {
    return 0;
}

static_assert(ColourRun(1, 255, 4) == 0x0001FFE1 && ColourRun(1, 255, 32) == 0x0001FF01 && BackgroundRun(32) != 0);

/// How much of each pixel a shape covers, rows from the top.
struct Coverage {
    unsigned width = 0;
    unsigned height = 0;
    /// width x height values, 0 to 255.
    std::vector<std::uint8_t> alpha{};

    std::uint8_t At(unsigned x, unsigned y) const { return alpha[std::size_t{y} * width + x]; }
    std::uint8_t& At(unsigned x, unsigned y) { return alpha[std::size_t{y} * width + x]; }
};

/// The codes of a face with smooth outlines: each line ends with an end of line, the glyph with an end of glyph.
///
/// Fully covered pixels are colour runs, the others are blended. When a colour run with a level below 255 is drawn, it
/// is divided by its level, so that every colour byte comes out too bright (a byte of 128 at level 128 gives 255). A
/// blended run multiplies by the level first: on an empty pixel it gives the colour itself, with the level as its
/// alpha.
RunCodes EncodeFace(const Coverage& face);

/// The codes of a face over an edge, both of the same size. `edge` includes what is below the face. A pixel of both
/// takes two codes: one sets the edge without moving on, the other blends the face over it.
/// @throws std::invalid_argument when the sizes differ.
RunCodes EncodeFaceAndEdge(const Coverage& face, const Coverage& edge);

/// The codes as the bytes of encoding data.
Bytes RunCodeBytes(std::span<const std::uint32_t> codes);

}  // namespace zel::files
