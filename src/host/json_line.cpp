#include "host/json_line.h"

#include <array>
#include <charconv>
#include <cmath>

namespace {

/// Escape of a byte below 32: the short one where JSON has one.
void AppendControl(std::string& text, unsigned char byte) {
    static constexpr char kDigits[] = "0123456789abcdef";
    switch (byte) {
        case '\b':
            text += "\\b";
            return;
        case '\t':
            text += "\\t";
            return;
        case '\n':
            text += "\\n";
            return;
        case '\f':
            text += "\\f";
            return;
        case '\r':
            text += "\\r";
            return;
        default:
            text += "\\u00";
            text += kDigits[byte >> 4];
            text += kDigits[byte & 15];
    }
}

template <typename Value>
void AppendNumber(std::string& text, Value value) {
    std::array<char, 40> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    text.append(digits.data(), end);
}

}  // namespace

void JsonLine::Separate() {
    if (m_text.empty()) return;
    const char last = m_text.back();
    if (last != '{' && last != '[' && last != ':') m_text += ',';
}

JsonLine& JsonLine::Open(char bracket) {
    Separate();
    m_text += bracket;
    return *this;
}

JsonLine& JsonLine::Close(char bracket) {
    m_text += bracket;
    return *this;
}

JsonLine& JsonLine::Key(std::string_view key) {
    Separate();
    m_text += '"';
    m_text += key;
    m_text += "\":";
    return *this;
}

JsonLine& JsonLine::Signed(std::int64_t value) {
    Separate();
    AppendNumber(m_text, value);
    return *this;
}

JsonLine& JsonLine::Unsigned(std::uint64_t value) {
    Separate();
    AppendNumber(m_text, value);
    return *this;
}

JsonLine& JsonLine::Float(double value) {
    if (!std::isfinite(value)) return Null();
    Separate();
    AppendNumber(m_text, value);
    return *this;
}

JsonLine& JsonLine::Null() {
    Separate();
    m_text += "null";
    return *this;
}

JsonLine& JsonLine::Bytes(std::string_view bytes) {
    Separate();
    m_text += '"';
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte == '"' || byte == '\\') {
            m_text += '\\';
            m_text += c;
        } else if (byte < 0x20) {
            AppendControl(m_text, byte);
        } else if (byte < 0x80) {
            m_text += c;
        } else {
            m_text += static_cast<char>(0xC0 | byte >> 6);
            m_text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    m_text += '"';
    return *this;
}
