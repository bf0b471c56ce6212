#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "module/contract/records/msg_row.h"

namespace zel::message {

/// File form to memory form, 8 bytes each; what is missing of the 8 reads as zero.
RowHead ConvertRowHead(std::span<const std::uint8_t> bytes) noexcept;
tag_msg_char ConvertMsgChar(std::span<const std::uint8_t> bytes) noexcept;

/// Converts a row as far as there are bytes for it and leaves the rest of it alone.
/// @param bytes  the file from the row on; a record cut short is filled up with zeros.
/// @return the bytes that the row takes in a file that holds it whole.
std::size_t ConvertRow(std::span<const std::uint8_t> bytes, tag_msg_row& row) noexcept;

}  // namespace zel::message
