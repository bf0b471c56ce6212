#include "host/message_document.h"

#include <string_view>

#include <nlohmann/json.hpp>

#include "host/module_text.h"
#include "message/palette.h"

namespace {

using Json = nlohmann::ordered_json;

std::string HexColour(COLORREF colour) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text = "#";
    for (const int shift : {0, 8, 16}) {
        text += kDigits[colour >> (shift + 4) & 15];
        text += kDigits[colour >> shift & 15];
    }
    return text;
}

template <std::size_t Size>
std::string FieldText(const char (&field)[Size]) {
    const std::string_view all(field, Size);
    return Utf8FromBytes(all.substr(0, all.find('\0')));
}

/// Face name without the blanks that right-justify it.
std::string FaceName(const LOGFONT& font) {
    const std::string name = FieldText(font.lfFaceName);
    const std::size_t begin = name.find_first_not_of(' ');
    return begin == std::string::npos ? std::string() : name.substr(begin);
}

std::uint32_t StoredEntry(const MessageRecord& message, int index) {
    return message.palette[static_cast<std::size_t>(index)];
}

Json FontOf(const MessageRecord& message, int slot) {
    Json font = {{"slot", slot}};
    if (slot < 0 || slot >= kFontSlots) return font;
    font["number"] = message.header.font_numbers[slot];
    if (const auto& record = message.fonts[static_cast<std::size_t>(slot)]) {
        font["name"] = Utf8FromBytes(record->header.Name());
    }
    return font;
}

Json Rows(const MessageRecord& message) {
    Json rows = Json::array();
    for (std::size_t index = 0; index < message.rows.size(); ++index) {
        const RowRecord& row = message.rows[index];
        rows.push_back({{"row", index},
                        {"y", row.y},
                        {"top", row.top},
                        {"depth", row.bottom - row.top},
                        {"text", Utf8FromBytes(row.text)}});
    }
    return rows;
}

Json Edge(const tag_CharInf& info) {
    static constexpr const char* kNames[] = {"none", "border", "drop shadow", "offset"};
    if (info.edge_type < 1 || info.edge_type > 3) return {{"type", kNames[0]}};
    return {{"type", kNames[info.edge_type]}, {"angle", info.edge_angle}, {"size", info.edge_size}};
}

Json Character(const MessageRecord& message, const CharacterRecord& character) {
    const tag_CharInf& info = character.info;
    const char code = static_cast<char>(character.character);
    Json json = {{"text", Utf8FromBytes({&code, 1})},
                 {"code", info.char_code},
                 {"row", info.row_index},
                 {"x", info.x},
                 {"y", info.y},
                 {"base_shift", info.base_shift},
                 {"form", character.font_slot ? "bitmap" : "text"},
                 {"font", FontOf(message, info.slot)},
                 {"face_colour", HexColour(info.face_colour)},
                 {"edge_colour", HexColour(info.edge_colour)},
                 {"edge", Edge(info)}};
    if (character.font_slot) {
        json["step"] = info.glyph_step;
    } else {
        json["typeface"] = {{"name", FaceName(character.log_font)},
                            {"height", character.log_font.lfHeight},
                            {"weight", character.log_font.lfWeight},
                            {"italic", character.log_font.lfItalic != 0}};
    }
    return json;
}

Json Characters(const MessageRecord& message) {
    Json characters = Json::array();
    for (const CharacterRecord& character : message.characters) {
        if (character.info.slot >= 0) characters.push_back(Character(message, character));
    }
    return characters;
}

Json TabFields(const MessageRecord& message) {
    Json fields = Json::array();
    for (const tag_tab_field& tab : message.tabs) {
        const int face = tab.ColourSet() * kSetEntries + kFaceEntry;
        fields.push_back({{"name", FieldText(tab.tab_name)},
                          {"row", tab.Row()},
                          {"frame",
                           {{"left", std::uint16_t{tab.tab_start}},
                            {"top", std::uint16_t{tab.tab_top}},
                            {"right", std::uint16_t{tab.tab_end}},
                            {"bottom", std::uint16_t{tab.tab_bottom}}}},
                          {"font", tab.Font() < kFontSlots ? FontOf(message, tab.Font()) : Json()},
                          {"colour", HexColour(PackColour(StoredEntry(message, face)))}});
    }
    return fields;
}

Json Fonts(const MessageRecord& message) {
    Json fonts = Json::array();
    for (int slot = 0; slot < kFontSlots; ++slot) {
        const auto& record = message.fonts[static_cast<std::size_t>(slot)];
        if (!record) continue;
        const tag_font_header& header = record->header;
        fonts.push_back({{"slot", slot},
                         {"number", message.header.font_numbers[slot]},
                         {"name", Utf8FromBytes(header.Name())},
                         {"file", Utf8FromBytes(record->file_name)},
                         {"height", std::int16_t{header.font_height}},
                         {"edge_type", header.EdgeType()},
                         {"edge_size", header.edge_size}});
    }
    return fonts;
}

Json Palette(const MessageRecord& message) {
    Json sets = Json::array();
    for (int set = 0; set < kColourSets; ++set) {
        Json colours = Json::array();
        for (int entry = 0; entry < kSetEntries; ++entry) {
            colours.push_back(HexColour(PackColour(StoredEntry(message, set * kSetEntries + entry))));
        }
        sets.push_back(std::move(colours));
    }
    return sets;
}

}  // namespace

nlohmann::ordered_json MessageDocument(const MessageRecord& message, const std::string& source) {
    Json document = {{"source", source}, {"id", Utf8FromBytes(message.id)}};
    if (message.rgba) {
        document["kind"] = "picture";
        document["insert_as"] = message.object ? "object" : "background";
        return document;
    }
    const tag_msg_header& header = message.header;
    document["kind"] = "message";
    document["standard"] = message.lines == 576 ? "PAL" : "NTSC";
    document["lines"] = message.lines;
    // The frame is stored in 16 bits, less the lines above the picture: a frame that begins above it is below 0.
    document["frame"] = {{"left", header.frame_left},
                         {"top", static_cast<std::int16_t>(header.frame_top)},
                         {"right", header.frame_right},
                         {"bottom", static_cast<std::int16_t>(header.frame_bottom)}};
    document["rows"] = Rows(message);
    document["characters"] = Characters(message);
    document["tab_fields"] = TabFields(message);
    document["fonts"] = Fonts(message);
    document["palette"] = Palette(message);
    return document;
}
