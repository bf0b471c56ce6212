#include "host/document/json_line.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "base/utf8.h"

namespace zel::document {

namespace {

/// Escape of a byte below 32, the short form if JSON has one.
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

/// Whether a byte needs no escape in a JSON string.
constexpr bool IsPlain(char c) noexcept {
    return c >= ' ' && c <= '~' && c != '"' && c != '\\';
}

void AppendOther(std::string& text, unsigned char byte) {
    if (byte < 0x20) {
        AppendControl(text, byte);
    } else if (byte < 0x80) {
        if (byte != 0x7F) text += '\\';
        text += static_cast<char>(byte);
    } else {
        base::AppendUtf8(text, byte);
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
    return Written("null");
}

JsonLine& JsonLine::Bool(bool value) {
    return Written(value ? "true" : "false");
}

JsonLine& JsonLine::Written(std::string_view json) {
    Separate();
    m_text += json;
    return *this;
}

JsonLine& JsonLine::Bytes(std::string_view bytes) {
    Separate();
    m_text += '"';
    while (!bytes.empty()) {
        const auto plain = static_cast<std::size_t>(std::ranges::find_if_not(bytes, IsPlain) - bytes.begin());
        m_text += bytes.substr(0, plain);
        bytes.remove_prefix(plain);
        if (bytes.empty()) break;
        AppendOther(m_text, static_cast<unsigned char>(bytes.front()));
        bytes.remove_prefix(1);
    }
    m_text += '"';
    return *this;
}

}  // namespace zel::document
