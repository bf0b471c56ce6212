#pragma once

#include <string_view>

#include "base/utf8.h"

namespace zel::fill {

inline bool IsUtf8(std::string_view text) noexcept {
    while (!text.empty()) {
        const base::Utf8Character c = base::FirstCharacter(text);
        if (!c.valid) return false;
        text.remove_prefix(c.size);
    }
    return true;
}

}  // namespace zel::fill
