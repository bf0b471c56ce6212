#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "module/contract/records/msg_row.h"

namespace zel::message {

/// Converts the head of a row from file form to memory form.
/// @param bytes  the record; missing ones of its 8 bytes read as zeros.
RowHead ConvertRowHead(std::span<const std::uint8_t> bytes) noexcept;

/// Converts one character, likewise of 8 bytes.
tag_msg_char ConvertMsgChar(std::span<const std::uint8_t> bytes) noexcept;

/// Converts a row as far as `bytes` go; later characters of `row` are not written.
/// @param bytes  the file from the start of the row; a truncated record is padded with zeros.
/// @return the size of the complete row in the file, in bytes.
std::size_t ConvertRow(std::span<const std::uint8_t> bytes, tag_msg_row& row) noexcept;

}  // namespace zel::message
