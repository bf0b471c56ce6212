#include "host/document/indented_json.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/document/json_limits.h"
#include "host/document/json_string.h"

namespace zel::document {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

/// Copies a valid JSON text with other blanks. A tree of its values would take ten times its memory.
class Indenter {
  public:
    explicit Indenter(std::string_view text) : m_text(text) { m_indented.reserve(2 * text.size()); }

    std::string Write() {
        for (m_next = m_text.find_first_not_of(kBlanks); m_next < m_text.size(); Skip(1)) Copy(m_text[m_next]);
        return std::move(m_indented);
    }

  private:
    /// Skips characters and the blanks after them.
    void Skip(std::size_t count) noexcept {
        m_next = std::min(m_text.find_first_not_of(kBlanks, m_next + count), m_text.size());
    }
    void EndLine() { m_indented.append(1, '\n').append(2 * m_depth, ' '); }
    void Copy(char c);
    void CopyString();
    void Open(char bracket);

    const std::string_view m_text;
    std::string m_indented;
    std::size_t m_next = 0;
    std::size_t m_depth = 0;
};

void Indenter::Copy(char c) {
    switch (c) {
        case '"':
            CopyString();
            break;
        case '{':
        case '[':
            Open(c);
            break;
        case '}':
        case ']':
            --m_depth;
            EndLine();
            m_indented += c;
            break;
        case ',':
            m_indented += c;
            EndLine();
            break;
        case ':':
            m_indented += ": ";
            break;
        default:
            m_indented += c;
    }
}

void Indenter::CopyString() {
    const std::size_t end = EndOfJsonString(m_text, m_next + 1);
    m_indented += m_text.substr(m_next, end + 1 - m_next);
    m_next = end;
}

void Indenter::Open(char bracket) {
    m_indented += bracket;
    const std::size_t inner = m_text.find_first_not_of(kBlanks, m_next + 1);
    if (inner < m_text.size() && (m_text[inner] == '}' || m_text[inner] == ']')) {
        m_indented += m_text[inner];
        m_next = inner;
        return;
    }
    ++m_depth;
    EndLine();
}

bool IsDocument(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    return first < text.size() && text[first] == '{' && JsonExcess(text) == nullptr && nlohmann::json::accept(text);
}

}  // namespace

std::string IndentedJson(const std::string& document) {
    return IsDocument(document) ? Indenter(document).Write() : document;
}

}  // namespace zel::document
