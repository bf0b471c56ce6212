#pragma once

#include <cstdint>
#include <span>

#include "module/contract/records/font_header.h"

namespace zel::font {

/// Converts the header of a font.
/// @param bytes  the header; missing ones of its 128 bytes read as zeros.
tag_font_header ConvertFontHeader(std::span<const std::uint8_t> bytes) noexcept;

/// Converts the head of a sample block.
/// @param bytes  the head; missing ones of its 10 bytes read as zeros.
tag_samp_struct ConvertSampleHead(std::span<const std::uint8_t> bytes) noexcept;

}  // namespace zel::font
