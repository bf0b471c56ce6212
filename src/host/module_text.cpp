#include "host/module_text.h"

#include "platform/framework/exceptions.h"

namespace zel::host {

std::string TakeText(CException* error) {
    char text[1024] = {};
    error->GetErrorMessage(text, sizeof text);
    error->Delete();
    return text[0] != '\0' ? OneLine(text) : "an error without a text";
}

std::string OneLine(std::string_view text) {
    std::string line;
    bool broken = false;
    for (const char c : text) {
        if (c == '\n' || c == '\r') {
            broken = true;
            while (!line.empty() && line.back() == ' ') line.pop_back();
            continue;
        }
        if (broken && c == ' ') continue;
        if (broken && !line.empty()) line += ' ';
        broken = false;
        line += c;
    }
    return line;
}

std::string Utf8FromBytes(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            text += c;
        } else {
            text += static_cast<char>(0xC0 | byte >> 6);
            text += static_cast<char>(0x80 | (byte & 0x3F));
        }
    }
    return text;
}

}  // namespace zel::host
