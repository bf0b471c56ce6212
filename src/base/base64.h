#pragma once

#include <string>
#include <string_view>

namespace zel::base {

/// Bytes in base64, with padding.
std::string Base64(std::string_view bytes);

}  // namespace zel::base
