#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zel::base {

/// Bytes compressed in little time, as a raw deflate stream.
/// @throws std::bad_alloc
std::string Deflated(std::string_view bytes);

/// The bytes of a raw deflate stream.
/// @param size  of the bytes; memory is allocated for it.
/// @return empty unless the stream is intact and has exactly as many bytes.
/// @throws std::bad_alloc
std::optional<std::string> Inflated(std::string_view stream, std::size_t size);

}  // namespace zel::base
