#include "host/document/indented_json.h"

#include <algorithm>

namespace zel::document {

namespace {

/// Brackets within more brackets than this go no deeper: a document has five, and a text of nothing but brackets must
/// not become far longer than it is.
constexpr std::size_t kDeepest = 8;

/// Behind the string whose opening quote stands at `begin`.
std::size_t BehindString(std::string_view json, std::size_t begin) noexcept {
    std::size_t at = begin + 1;
    while (at < json.size() && json[at] != '"') at += json[at] == '\\' ? 2 : 1;
    return std::min(at + 1, json.size());
}

void BreakLine(std::string& text, std::size_t depth) {
    text += '\n';
    text.append(std::min(depth, kDeepest) * 2, ' ');
}

}  // namespace

std::string IndentedJson(std::string_view json) {
    std::string text;
    text.reserve(json.size() * 3);
    std::size_t depth = 0;
    for (std::size_t at = 0; at < json.size();) {
        const char c = json[at];
        if (c == '}' || c == ']') {
            depth -= depth > 0 ? 1U : 0U;
            if (at > 0 && json[at - 1] != '{' && json[at - 1] != '[') BreakLine(text, depth);
        }
        const std::size_t end = c == '"' ? BehindString(json, at) : at + 1;
        text += json.substr(at, end - at);
        at = end;
        const bool opens = c == '{' || c == '[';
        if (c == ':') text += ' ';
        if (opens) ++depth;
        if (c == ',' || (opens && at < json.size() && json[at] != '}' && json[at] != ']')) BreakLine(text, depth);
    }
    return text;
}

}  // namespace zel::document
