#include "base/base64.h"

#include <nettle/base64.h>

namespace zel::base {

std::string Base64(std::string_view bytes) {
    std::string text(BASE64_ENCODE_RAW_LENGTH(bytes.size()), '\0');
    base64_encode_raw(text.data(), bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
    return text;
}

}  // namespace zel::base
