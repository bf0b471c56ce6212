#include "host/filejson/document_parser.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace zel::filejson {

namespace {

/// Far more than a document has, which is 8.
constexpr std::size_t kDeepest = 64;
/// A character has 14 members.
constexpr std::size_t kMostMembers = 256;
/// At one time, apart from rows that are read. The run codes of a font have one for each line of a glyph.
constexpr std::size_t kMostValues = 4000000;

/// Receives the parser's events.
class DocumentEvents {
  public:
    DocumentEvents(Faults& faults, const std::function<void(std::size_t, const Json&)>& on_row)
        : m_faults(faults), m_on_row(on_row) {}

    ParsedDocument Take() { return std::move(m_document); }

    bool null() { return Scalar(nullptr); }
    bool boolean(bool value) { return Scalar(value); }
    bool number_integer(Json::number_integer_t value) { return Scalar(value); }
    bool number_unsigned(Json::number_unsigned_t value) { return Scalar(value); }
    bool number_float(Json::number_float_t value, const std::string&) { return Scalar(value); }
    bool string(std::string& value) { return Scalar(std::move(value)); }
    bool binary(Json::binary_t&) { return false; }
    bool start_object(std::size_t) { return Begin(Json::object()); }
    bool start_array(std::size_t) { return Begin(Json::array()); }
    bool end_object() { return End(); }
    bool end_array() { return End(); }

    bool key(std::string& key) {
        if (m_depth == 1) {
            if (key == "file" && m_document.has_file) m_faults.Add("/file", "is there twice");
            m_root_key = key;
        } else if (!m_open.empty()) {
            Json& object = *m_open.back().json;
            if (object.size() == kMostMembers) throw std::runtime_error("has an object with more than 256 members");
            if (object.contains(key)) m_faults.Add(Pointer() + '/' + PointerKey(key), "is there twice");
            m_open.back().key = key;
        }
        return true;
    }

    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& error) {
        // Without the library's name and number of the error.
        const std::string_view text = error.what();
        throw std::runtime_error("is not JSON: " +
                                 std::string(text.substr(std::min(text.find("] ") + 2, text.size()))));
    }

  private:
    struct Level {
        Json* json;
        /// Of the member that is being read.
        std::string key{};
    };

    bool IsRows() const { return m_open.size() == 2 && m_open[0].key == "rows" && m_open[1].json->is_array(); }

    std::string Pointer() const {
        std::string text = "/file";
        for (std::size_t n = 0; n + 1 < m_open.size(); ++n) {
            const Level& level = m_open[n];
            const bool is_rows = n == 1 && m_open[0].key == "rows";
            text += '/' + (level.json->is_object() ? PointerKey(level.key)
                                                   : std::to_string(is_rows ? m_row : level.json->size() - 1));
        }
        return text;
    }

    Json* Add(Json value) {
        if (++m_values > kMostValues) throw std::runtime_error("has more than 4,000,000 values");
        Level& level = m_open.back();
        if (level.json->is_array()) {
            level.json->push_back(std::move(value));
            return &level.json->back();
        }
        return &((*level.json)[level.key] = std::move(value));
    }

    bool Scalar(Json value) {
        if (m_depth == 0) throw std::runtime_error("is no JSON object");
        if (!m_open.empty()) {
            Add(std::move(value));
            ReadRow();
        } else if (m_depth == 1) {
            SetRootMember(std::move(value));
        }
        return true;
    }

    bool SetRootMember(Json value) {
        if (m_root_key == "version") {
            m_document.version = std::move(value);
            m_document.has_version = true;
        } else if (m_root_key == "file") {
            m_document.file = std::move(value);
            m_document.has_file = true;
            return true;
        }
        return false;
    }

    bool Begin(Json value) {
        if (m_depth == 0 && !value.is_object()) throw std::runtime_error("is no JSON object");
        if (m_depth == kDeepest) throw std::runtime_error("is nested deeper than 64 levels");
        ++m_depth;
        if (!m_open.empty()) {
            m_open.push_back({Add(std::move(value))});
            if (IsRows()) m_values_before_rows = m_values;
        } else if (m_depth == 2 && SetRootMember(std::move(value))) {
            m_open.push_back({&m_document.file});
            m_values = 0;
            m_row = 0;
        }
        return true;
    }

    bool End() {
        --m_depth;
        if (m_open.empty()) return true;
        m_open.pop_back();
        ReadRow();
        return true;
    }

    /// Gives a complete row away.
    void ReadRow() {
        if (!IsRows() || m_open[1].json->empty()) return;
        m_on_row(m_row++, m_open[1].json->back());
        m_open[1].json->clear();
        m_values = m_values_before_rows;
    }

    Faults& m_faults;
    const std::function<void(std::size_t, const Json&)>& m_on_row;
    ParsedDocument m_document;
    std::size_t m_depth = 0;
    std::string m_root_key;
    /// The objects and arrays of `file` that are open.
    std::vector<Level> m_open;
    std::size_t m_values = 0, m_values_before_rows = 0, m_row = 0;
};

}  // namespace

ParsedDocument ParseFileDocument(std::string_view text, Faults& faults,
                                 const std::function<void(std::size_t, const Json&)>& on_row) {
    DocumentEvents events(faults, on_row);
    Json::sax_parse(text.begin(), text.end(), &events);
    return events.Take();
}

}  // namespace zel::filejson
