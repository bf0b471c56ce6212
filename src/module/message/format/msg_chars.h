#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "base/instructions.h"
#include "module/contract/records/msg_row.h"

namespace zel::message::msg_chars {

/// One implementation of the conversion of `count` character records from file form to memory form. All implementations
/// give the same bytes.
struct Path {
    const char* name;
    base::Instructions needs;
    /// @param from  8 bytes for each record; must not overlap `to`.
    void (*convert)(const std::uint8_t* from, tag_msg_char* to, std::size_t count) noexcept;
};

/// The implementations that this processor supports, the fastest first. The last one needs no vector instructions.
std::span<const Path> Paths() noexcept;

}  // namespace zel::message::msg_chars
