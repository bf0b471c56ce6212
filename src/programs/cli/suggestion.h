#pragma once

#include <span>
#include <string>
#include <string_view>

namespace zel::cli {

/// The name that a mistyped one was probably meant to be; empty if none is like it.
std::string Suggestion(std::string_view typed, std::span<const std::string> names);

}  // namespace zel::cli
