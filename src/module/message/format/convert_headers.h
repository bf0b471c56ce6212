#pragma once

#include <cstdint>
#include <span>

#include "module/contract/records/msg_header.h"
#include "module/contract/records/psos_header.h"

namespace zel::message {

/// Converts the Psos file header of a message, font or RGBA file.
/// @param file  the file's first bytes; missing ones of the 136 read as zeros.
tag_psos_header ConvertPsosHeader(std::span<const std::uint8_t> file) noexcept;

/// Converts the section flags of a message.
/// @param bytes  the block; missing ones of its 16 bytes read as zeros.
tag_msg_flags ConvertMsgFlags(std::span<const std::uint8_t> bytes) noexcept;

/// Converts the header of a message.
/// @param bytes        the block; missing ones of its 52 bytes read as zeros.
/// @param line_offset  in lines; subtracted from frame_top and frame_bottom, wrapping in 16 bits.
tag_msg_header ConvertMsgHeader(std::span<const std::uint8_t> bytes, std::uint16_t line_offset) noexcept;

}  // namespace zel::message
