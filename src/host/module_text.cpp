#include "host/module_text.h"

#include "platform/framework/exceptions.h"

namespace zel::host {

std::string TakeText(CException* error) {
    char text[1024] = {};
    try {
        error->GetErrorMessage(text, sizeof text);
    } catch (CMemoryException* memory) {
        memory->GetErrorMessage(text, sizeof text);
        memory->Delete();
    }
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

}  // namespace zel::host
