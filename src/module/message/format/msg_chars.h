#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "module/contract/records/msg_row.h"

namespace zel::message {

namespace msg_chars {

/// One way of converting `count` character records from file form to memory form. All ways give the same bytes.
struct Path {
    const char* name;
    /// @param from  8 bytes a record, apart from `to`.
    void (*convert)(const std::uint8_t* from, tag_msg_char* to, std::size_t count) noexcept;
};

/// The ways that this processor can go, the fastest first, the one without vector instructions last.
std::span<const Path> Paths() noexcept;

}  // namespace msg_chars

}  // namespace zel::message
