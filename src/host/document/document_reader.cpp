#include "host/document/document_reader.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <utility>

#include <nlohmann/json.hpp>

#include "host/document/json_limits.h"
#include "platform/system/files.h"

namespace zel::document {

namespace {

using Json = nlohmann::ordered_json;

/// Greatest distance from the picture's corner. Far above any message; sums of a few never overflow.
constexpr int kFarthest = 4096;

const Json& Member(const Json& json, const char* key) {
    static const Json none;
    if (!json.is_object()) return none;
    const auto found = json.find(key);
    return found != json.end() ? *found : none;
}

/// The elements of an array; none of any other value.
const Json& Elements(const Json& json, const char* key) {
    static const Json none;
    const Json& value = Member(json, key);
    return value.is_array() ? value : none;
}

int Number(const Json& json, const char* key, int limit) {
    const Json& value = Member(json, key);
    if (!value.is_number()) return 0;
    return static_cast<int>(std::clamp<double>(value.get<double>(), -limit, limit));
}

int Number(const Json& json, const char* key) {
    return Number(json, key, std::numeric_limits<std::uint16_t>::max());
}

int Place(const Json& json, const char* key) {
    return Number(json, key, kFarthest);
}

std::string TextOf(const Json& value) {
    return value.is_string() ? value.get<std::string>() : std::string();
}

std::string Text(const Json& json, const char* key) {
    return TextOf(Member(json, key));
}

/// Widths of the characters, by the rule of DocumentCharacter::width.
class WidthRule {
  public:
    explicit WidthRule(DocumentContents& contents) : m_contents(contents), m_last(contents.rows.size()) {}

    /// Sets the width of the character that was added last, and that of the one before it in its row.
    void OnAdded(int step) {
        DocumentCharacter& added = m_contents.characters.back();
        const int height = std::max(m_contents.rows[added.row].height, kLeastRowHeight);
        Last& last = m_last[added.row];
        if (last.count > 0) {
            DocumentCharacter& before = m_contents.characters[last.index];
            if (added.x > before.x) before.width = std::min(added.x - before.x, std::max(height, last.step));
        }
        added.width = step > 0 ? step : height / 2;
        last = {last.count + 1, m_contents.characters.size() - 1, step};
    }

  private:
    /// The last character of a row so far.
    struct Last {
        std::size_t count = 0;
        std::size_t index = 0;
        int step = 0;
    };

    DocumentContents& m_contents;
    std::vector<Last> m_last;
};

DocumentCharacter ReadCharacter(const Json& json) {
    DocumentCharacter character;
    character.text = Text(json, "text");
    character.code = Number(json, "code");
    character.row = Member(json, "row").get<std::size_t>();
    character.x = Place(json, "x");
    character.bitmap = Text(json, "form") != "text";
    const Json& font = Member(json, "font");
    character.font_number = Number(font, "number");
    character.font_name = Text(font, "name");
    character.typeface = Text(Member(json, "typeface"), "name");
    character.face_colour = Text(json, "face_colour");
    return character;
}

void ReadCharacters(const Json& characters, DocumentContents& contents) {
    WidthRule widths(contents);
    for (const Json& json : characters) {
        const Json& row = Member(json, "row");
        const bool has_row = row.is_number_unsigned() && row.get<std::uint64_t>() < contents.rows.size();
        if (!has_row || !Member(json, "text").is_string()) continue;
        contents.characters.push_back(ReadCharacter(json));
        widths.OnAdded(Place(json, "step"));
    }
}

DocumentRow ReadRow(const Json& json) {
    return {Place(json, "y") + Place(json, "top"), Place(json, "depth"), Text(json, "text")};
}

/// @param document  has module paths if it was written before documents had a version.
DocumentFont ReadFont(const Json& json, const Json& document) {
    std::string file = Text(json, "file");
    if (Member(document, "version").is_null()) file = system::NativePath(file.c_str());
    return {Number(json, "slot"), Number(json, "number"), Text(json, "name"), Number(json, "height"), std::move(file)};
}

DocumentField ReadField(const Json& json) {
    const Json& frame = Member(json, "frame");
    return {Text(json, "name"),     Number(json, "row"),     Number(frame, "left"), Number(frame, "top"),
            Number(frame, "right"), Number(frame, "bottom"), Text(json, "colour")};
}

std::vector<std::string> ReadColourSet(const Json& set) {
    std::vector<std::string> colours;
    if (!set.is_array()) return colours;
    for (const Json& colour : set) colours.push_back(TextOf(colour));
    return colours;
}

}  // namespace

Json ParseDocument(const std::string& text) {
    if (text.empty()) return nullptr;
    if (const char* excess = JsonExcess(text)) throw std::runtime_error(std::string("the recorded document ") + excess);
    Json document = Json::parse(text, nullptr, false);
    if (!document.is_object()) throw std::runtime_error("the recorded document is no message");
    return document;
}

DocumentContents ReadDocument(const Json& document) {
    DocumentContents contents;
    for (const Json& row : Elements(document, "rows")) contents.rows.push_back(ReadRow(row));
    ReadCharacters(Elements(document, "characters"), contents);
    for (const Json& font : Elements(document, "fonts")) contents.fonts.push_back(ReadFont(font, document));
    for (const Json& field : Elements(document, "tab_fields")) contents.fields.push_back(ReadField(field));
    for (const Json& set : Elements(document, "palette")) contents.palette.push_back(ReadColourSet(set));
    return contents;
}

DocumentContents ReadDocumentText(const std::string& text) {
    try {
        return ReadDocument(ParseDocument(text));
    } catch (const std::runtime_error&) {
        return {};
    }
}

}  // namespace zel::document
