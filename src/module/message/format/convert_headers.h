#pragma once

#include <cstdint>
#include <span>

#include "module/contract/records/msg_header.h"
#include "module/contract/records/psos_header.h"

namespace zel::message {

/// The header from the file's first bytes; what is missing of the 136 reads as zero.
tag_psos_header ConvertPsosHeader(std::span<const std::uint8_t> file) noexcept;

/// The two blocks from file bytes; what is missing reads as zero. ConvertMsgHeader takes line_offset off frame_top and
/// frame_bottom, wrapping in 16 bits as the format's words do.
tag_msg_flags ConvertMsgFlags(std::span<const std::uint8_t> bytes) noexcept;
tag_msg_header ConvertMsgHeader(std::span<const std::uint8_t> bytes, std::uint16_t line_offset) noexcept;

}  // namespace zel::message
