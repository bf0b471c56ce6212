#include "host/document/message_document.h"

#include <algorithm>
#include <string_view>
#include <tuple>
#include <vector>

#include <nlohmann/json.hpp>

#include "base/field_text.h"
#include "host/document/json_line.h"
#include "host/document/json_version.h"
#include "host/document/message_warnings.h"
#include "module/contract/records/palette.h"
#include "platform/system/files.h"

namespace zel::document {

namespace {

/// Face name without the leading blanks that right-justify it.
std::string_view FaceName(const LOGFONT& font) noexcept {
    std::string_view name = base::FieldText(font.lfFaceName);
    name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
    return name;
}

/// Whether two characters differ only in code and position, as most in a row do.
bool HaveSameAppearance(const CharacterRecord& one, const CharacterRecord& other) noexcept {
    const auto appearance = [](const CharacterRecord& character) {
        const tag_CharInf& info = character.info;
        return std::tuple(character.font_slot.has_value(), info.slot, info.face_colour, info.edge_colour,
                          info.edge_type, info.edge_angle, info.edge_size);
    };
    return appearance(one) == appearance(other);
}

/// Writes the document directly as text. Building a JSON object for each character would take longer than the rest of
/// a recording without its picture.
class DocumentWriter {
  public:
    explicit DocumentWriter(const MessageRecord& message) : m_message(message) {}

    std::string Write();

  private:
    void Head();
    void Colour(COLORREF colour);
    void StoredColour(int entry) { Colour(PackColour(m_message.palette[static_cast<std::size_t>(entry)])); }
    void Font(int slot);
    void Edge(const tag_CharInf& info);
    void Appearance(const CharacterRecord& character);
    void Character(const CharacterRecord& character);
    void Rows();
    void Characters();
    void TabField(const tag_tab_field& tab);
    void TabFields();
    void Fonts();
    void Palette();
    void Text(std::string_view text);
    void Path(const std::string& module_path) { Text(system::NativePath(module_path.c_str())); }
    void Warnings();

    const MessageRecord& m_message;
    JsonLine m_json;
    /// The character whose appearance was written last, and where in the text it is.
    const CharacterRecord* m_last = nullptr;
    std::size_t m_appearance = 0, m_appearance_end = 0;
};

void DocumentWriter::Colour(COLORREF colour) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    char text[7] = {'#'};
    for (int n = 0; n < 6; ++n) text[n + 1] = kDigits[colour >> ((n ^ 1) * 4) & 15];
    m_json.Bytes({text, sizeof text});
}

void DocumentWriter::Font(int slot) {
    m_json.Key("font").Open('{').Number("slot", slot);
    if (slot >= 0 && slot < kFontSlots) {
        m_json.Number("number", m_message.header.font_numbers[slot]);
        const auto& record = m_message.fonts[static_cast<std::size_t>(slot)];
        if (record) m_json.Bytes("name", record->header.Name());
    }
    m_json.Close('}');
}

void DocumentWriter::Rows() {
    m_json.Key("rows").Open('[');
    for (std::size_t index = 0; index < m_message.rows.size(); ++index) {
        const RowRecord& row = m_message.rows[index];
        m_json.Open('{').Number("row", index).Number("y", row.y).Number("top", row.top);
        m_json.Number("depth", row.bottom - row.top).Bytes("text", row.text).Close('}');
    }
    m_json.Close(']');
}

void DocumentWriter::Edge(const tag_CharInf& info) {
    static constexpr const char* kNames[] = {"none", "border", "drop shadow", "offset"};
    const bool has_edge = info.edge_type >= 1 && info.edge_type <= 3;
    m_json.Key("edge").Open('{').Bytes("type", kNames[has_edge ? info.edge_type : 0]);
    if (has_edge) m_json.Number("angle", info.edge_angle).Number("size", info.edge_size);
    m_json.Close('}');
}

void DocumentWriter::Appearance(const CharacterRecord& character) {
    const tag_CharInf& info = character.info;
    m_json.Bytes("form", character.font_slot ? "bitmap" : "text");
    Font(info.slot);
    m_json.Key("face_colour");
    Colour(info.face_colour);
    m_json.Key("edge_colour");
    Colour(info.edge_colour);
    Edge(info);
}

void DocumentWriter::Character(const CharacterRecord& character) {
    const tag_CharInf& info = character.info;
    const char code = static_cast<char>(character.character);
    m_json.Open('{').Bytes("text", {&code, 1}).Number("code", info.char_code).Number("row", info.row_index);
    m_json.Number("x", info.x).Number("y", info.y).Number("base_shift", info.base_shift);
    if (m_last != nullptr && HaveSameAppearance(*m_last, character)) {
        m_json.Repeat(m_appearance, m_appearance_end);
    } else {
        m_last = &character;
        m_appearance = m_json.Text().size();
        Appearance(character);
        m_appearance_end = m_json.Text().size();
    }
    if (character.font_slot) {
        m_json.Number("step", info.glyph_step);
    } else {
        const LOGFONT& font = character.log_font;
        m_json.Key("typeface").Open('{').Bytes("name", FaceName(font)).Number("height", font.lfHeight);
        m_json.Number("weight", font.lfWeight).Key("italic").Bool(font.lfItalic != 0).Close('}');
    }
    m_json.Close('}');
}

void DocumentWriter::Characters() {
    m_json.Key("characters").Open('[');
    for (const CharacterRecord& character : m_message.characters) Character(character);
    m_json.Close(']');
}

void DocumentWriter::TabField(const tag_tab_field& tab) {
    m_json.Open('{').Bytes("name", base::FieldText(tab.tab_name)).Number("row", tab.Row()).Key("frame").Open('{');
    m_json.Number("left", std::uint16_t{tab.tab_start}).Number("top", std::uint16_t{tab.tab_top});
    m_json.Number("right", std::uint16_t{tab.tab_end}).Number("bottom", std::uint16_t{tab.tab_bottom}).Close('}');
    if (tab.Font() < kFontSlots) {
        Font(tab.Font());
    } else {
        m_json.Key("font").Null();
    }
    m_json.Key("colour");
    StoredColour(tab.ColourSet() * kSetEntries + kFaceEntry);
    m_json.Close('}');
}

void DocumentWriter::TabFields() {
    m_json.Key("tab_fields").Open('[');
    for (const tag_tab_field& tab : m_message.tabs) TabField(tab);
    m_json.Close(']');
}

void DocumentWriter::Fonts() {
    m_json.Key("fonts").Open('[');
    for (int slot = 0; slot < kFontSlots; ++slot) {
        const auto& record = m_message.fonts[static_cast<std::size_t>(slot)];
        if (!record) continue;
        const tag_font_header& header = record->header;
        m_json.Open('{').Number("slot", slot).Number("number", m_message.header.font_numbers[slot]);
        m_json.Bytes("name", header.Name()).Key("file");
        Path(record->file_name);
        m_json.Number("height", std::int16_t{header.font_height}).Number("edge_type", header.EdgeType());
        m_json.Number("edge_size", header.edge_size).Close('}');
    }
    m_json.Close(']');
}

void DocumentWriter::Palette() {
    m_json.Key("palette").Open('[');
    for (int set = 0; set < kColourSets; ++set) {
        m_json.Open('[');
        for (int entry = 0; entry < kSetEntries; ++entry) StoredColour(set * kSetEntries + entry);
        m_json.Close(']');
    }
    m_json.Close(']');
}

/// UTF-8 or not, unlike the module's texts.
void DocumentWriter::Text(std::string_view text) {
    constexpr auto kReplaceBadUtf8 = nlohmann::json::error_handler_t::replace;
    m_json.Written(nlohmann::json(text).dump(-1, ' ', false, kReplaceBadUtf8));
}

void DocumentWriter::Warnings() {
    m_json.Key("warnings").Open('[');
    for (const std::string& warning : WarningsOf(m_message)) Text(warning);
    m_json.Close(']');
}

void DocumentWriter::Head() {
    const tag_msg_header& header = m_message.header;
    m_json.Bytes("kind", "message").Bytes("standard", NameOf(m_message.standard));
    // The frame is stored in 16 bits, less the line offset: a frame that begins above the picture is negative.
    m_json.Number("lines", ActiveLines(m_message.standard)).Key("frame").Open('{').Number("left", header.frame_left);
    m_json.Number("top", static_cast<std::int16_t>(header.frame_top)).Number("right", header.frame_right);
    m_json.Number("bottom", static_cast<std::int16_t>(header.frame_bottom)).Close('}');
}

std::string DocumentWriter::Write() {
    constexpr std::size_t kAroundCharacters = 8192, kCharacter = 384;  // bytes; enough for almost every message
    m_json.Reserve(kAroundCharacters + m_message.characters.size() * kCharacter);
    m_json.Open('{').Number("version", kJsonVersion).Key("source");
    Path(m_message.file);
    m_json.Key("id");
    Text(m_message.id);
    if (m_message.rgba) {
        m_json.Bytes("kind", "picture").Bytes("insert_as", m_message.object ? "object" : "background");
    } else {
        Head();
        Rows();
        Characters();
        TabFields();
        Fonts();
        Palette();
    }
    Warnings();
    m_json.Close('}');
    return m_json.Take();
}

}  // namespace

std::string MessageDocument(const MessageRecord& message) {
    return DocumentWriter(message).Write();
}

}  // namespace zel::document
