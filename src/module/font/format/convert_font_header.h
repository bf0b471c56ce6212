#pragma once

#include <cstdint>
#include <span>

#include "module/contract/records/font_header.h"

namespace zel::font {

/// The header from its 128 bytes in the file; missing ones read as zero.
tag_font_header ConvertFontHeader(std::span<const std::uint8_t> bytes) noexcept;

/// The head of a sample block from its 10 bytes; missing ones read as zero.
tag_samp_struct ConvertSampleHead(std::span<const std::uint8_t> bytes) noexcept;

}  // namespace zel::font
