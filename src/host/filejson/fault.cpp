#include "host/filejson/fault.h"

namespace zel::filejson {

std::string PointerKey(std::string_view key) {
    std::string text;
    for (const char c : key) {
        if (c == '~') {
            text += "~0";
        } else if (c == '/') {
            text += "~1";
        } else {
            text += c;
        }
    }
    return text;
}

std::string Place::Pointer() const {
    if (m_parent == nullptr) return {};
    return m_parent->Pointer() + '/' + (m_key.data() != nullptr ? PointerKey(m_key) : std::to_string(m_index));
}

}  // namespace zel::filejson
