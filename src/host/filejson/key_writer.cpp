#include "host/filejson/key_writer.h"

#include "base/field_text.h"
#include "host/filejson/byte_values.h"

namespace zel::filejson {

void KeyWriter::Text(std::string_view key, const std::string& field, std::size_t) {
    const std::string_view text = base::UpToNul(field);
    if (!text.empty()) m_json.Bytes(key, text);
    if (text.size() == field.size()) return;
    Bytes(std::string(key) + "_rest", {field.begin() + static_cast<std::ptrdiff_t>(text.size()) + 1, field.end()});
}

void KeyWriter::Bytes(std::string_view key, const files::Bytes& bytes, PassedOver passed_over) {
    if (bytes.empty()) return;
    m_json.Key(key).Open('{');
    const bool counts = passed_over == PassedOver::kYes && !m_exact;
    if (AreEqual(bytes)) {
        m_json.Number("size", bytes.size()).Number("fill", unsigned{bytes.front()});
    } else if (counts && bytes.size() > kMostPassedOver - m_kept) {
        m_left_out += bytes.size();
        m_json.Number("size", bytes.size()).Key("left_out").Bool(true);
    } else {
        if (counts) m_kept += bytes.size();
        m_json.Bytes("base64", Base64(bytes));
    }
    m_json.Close('}');
}

}  // namespace zel::filejson
