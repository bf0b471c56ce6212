#include "host/compare/message_contents.h"

#include <charconv>
#include <string_view>

#include <nlohmann/json.hpp>

#include "base/field_text.h"
#include "base/utf8.h"
#include "base/word_gap.h"
#include "module/contract/records/palette.h"

namespace zel::compare {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::uint32_t Rgb(COLORREF colour) noexcept {
    return (colour & 255U) << 16 | (colour & 0xFF00U) | (colour >> 16 & 255U);
}

int FontOf(const MessageContents& contents, int slot) {
    if (slot < 0 || slot >= kFontSlots) return -1;
    return contents.slots[static_cast<std::size_t>(slot)].value_or(-1);
}

ContentRow RowOf(const tag_msg_row& row, const MessageContents& contents) {
    ContentRow result{row.Y(), row.Top(), row.Bottom(), row.Empty()};
    if (row.Empty()) return result;
    // As the import walks a row: it ends after char_count characters, or at the index that has no record.
    int index = row.FirstChar();
    for (int step = 0; step < row.CharCount() && index != kChainEnd; ++step) {
        const tag_msg_char& record = row.chars[index];
        ContentCharacter character;
        character.code = record.Code();
        character.x = record.X() + kXOffset;
        character.y = record.Y();
        character.slot = record.Font();
        character.font = FontOf(contents, record.Font());
        character.colour_set = record.ColourSet();
        character.place_flag = record.PlaceFlag();
        result.characters.push_back(std::move(character));
        index = record.Next();
    }
    return result;
}

ContentField FieldOf(const tag_tab_field& tab, const MessageContents& contents) {
    // tab_row, tab_font and the three bits of tab_colour have members of their own.
    constexpr std::uint32_t kOwn = 0x3FU | 0x1FU << 10 | 7U << 15;
    ContentField field;
    field.name = base::Utf8FromLatin1(base::FieldText(tab.tab_name));
    field.row = tab.Row();
    field.left = tab.tab_start;
    field.right = tab.tab_end;
    field.slot = tab.Font();
    field.font = FontOf(contents, tab.Font());
    field.colour_set = tab.ColourSet();
    field.byte = tab.tab_byte;
    field.flags = tab.tab_bits & ~kOwn;
    return field;
}

// Members of a document, which need not have them.
const Json* Member(const Json& object, const char* key) {
    if (!object.is_object()) return nullptr;
    const auto found = object.find(key);
    return found == object.end() ? nullptr : &*found;
}

int Number(const Json& object, const char* key) {
    const Json* const value = Member(object, key);
    if (value == nullptr || !value->is_number_integer()) return 0;
    const auto number = value->get<std::int64_t>();
    return number < INT32_MIN || number > INT32_MAX ? 0 : static_cast<int>(number);
}

std::string Text(const Json& object, const char* key) {
    const Json* const value = Member(object, key);
    return value != nullptr && value->is_string() ? value->get<std::string>() : std::string();
}

const Json& Child(const Json& object, const char* key) {
    static const Json kNothing;
    const Json* const value = Member(object, key);
    return value != nullptr ? *value : kNothing;
}

std::uint32_t ColourOf(const Json& value) {
    if (!value.is_string()) return 0;
    const auto& text = value.get_ref<const std::string&>();
    std::uint32_t colour = 0;
    if (text.size() == 7 && text[0] == '#') std::from_chars(text.data() + 1, text.data() + 7, colour, 16);
    return colour;
}

std::string Dumped(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

ContentCharacter CharacterOf(const Json& json) {
    ContentCharacter character;
    character.code = Number(json, "code");
    character.x = Number(json, "x");
    character.y = Number(json, "base_shift");
    const Json& font = Child(json, "font");
    character.slot = Number(font, "slot");
    if (Member(font, "number") != nullptr) character.font = Number(font, "number");
    character.face = ColourOf(Child(json, "face_colour"));
    character.edge = ColourOf(Child(json, "edge_colour"));
    character.form = Text(json, "form");
    if (const Json& edge = Child(json, "edge"); Text(edge, "type") != "none") character.form += " " + Dumped(edge);
    if (const Json* typeface = Member(json, "typeface")) character.form += " " + Dumped(*typeface);
    return character;
}

void ReadHead(const Json& document, MessageContents& contents) {
    contents.standard = Text(document, "standard");
    static constexpr const char* kSides[] = {"left", "top", "right", "bottom"};
    for (std::size_t side = 0; side < contents.frame.size(); ++side)
        contents.frame[side] = Number(Child(document, "frame"), kSides[side]);
    for (const Json& font : Child(document, "fonts")) {
        const auto slot = static_cast<std::size_t>(Number(font, "slot"));
        if (slot >= contents.slots.size()) continue;
        contents.slots[slot] = Number(font, "number");
        contents.fonts[slot] = Text(font, "name") + ", height " + std::to_string(Number(font, "height")) + ", edge " +
                               std::to_string(Number(font, "edge_type")) + " of " +
                               std::to_string(Number(font, "edge_size"));
    }
    std::size_t index = 0;
    for (const Json& set : Child(document, "palette")) {
        for (const Json& colour : set) {
            if (index < contents.palette.size()) contents.palette[index++] = ColourOf(colour);
        }
    }
}

void ReadFields(const Json& document, MessageContents& contents) {
    for (const Json& json : Child(document, "tab_fields")) {
        ContentField field;
        field.name = Text(json, "name");
        field.row = Number(json, "row");
        field.left = Number(Child(json, "frame"), "left");
        field.right = Number(Child(json, "frame"), "right");
        const Json& font = Child(json, "font");
        field.slot = Member(font, "slot") != nullptr ? Number(font, "slot") : kFontSlots;
        if (Member(font, "number") != nullptr) field.font = Number(font, "number");
        field.colour = ColourOf(Child(json, "colour"));
        contents.fields.push_back(std::move(field));
    }
}

}  // namespace

MessageContents ContentsOf(const message::LoadedMessage& message) {
    MessageContents contents;
    contents.standard = NameOf(message.flags->Standard());
    const tag_msg_header& header = *message.header;
    contents.frame = {header.frame_left, static_cast<std::int16_t>(header.frame_top), header.frame_right,
                      static_cast<std::int16_t>(header.frame_bottom)};
    for (std::size_t slot = 0; slot < contents.slots.size(); ++slot) {
        if (header.font_numbers[slot] != kNoFont) contents.slots[slot] = header.font_numbers[slot];
    }
    for (std::size_t entry = 0; entry < contents.palette.size(); ++entry)
        contents.palette[entry] =
            Rgb(PackColour(message.palette->colour_sets[entry / kSetEntries][entry % kSetEntries]));
    contents.flash_font = message.flash_font;
    contents.bad_field_row = message.bad_tab_row;
    contents.bad_field = message.bad_tab_field;
    contents.rows.reserve(static_cast<std::size_t>(header.RowCount()));
    for (int row = 0; row < header.RowCount(); ++row)
        contents.rows.push_back(RowOf(message.rows[static_cast<std::size_t>(row)], contents));
    for (int tab = 0; tab < message.tab_count; ++tab)
        contents.fields.push_back(FieldOf(message.tabs[static_cast<std::size_t>(tab)], contents));
    return contents;
}

MessageContents ContentsOf(const nlohmann::ordered_json& document) {
    MessageContents contents;
    ReadHead(document, contents);
    for (const Json& row : Child(document, "rows")) {
        const int top = Number(row, "top");
        contents.rows.push_back({Number(row, "y"), top, top + Number(row, "depth"), false});
    }
    for (const Json& json : Child(document, "characters")) {
        const auto row = static_cast<std::size_t>(Number(json, "row"));
        if (row < contents.rows.size()) contents.rows[row].characters.push_back(CharacterOf(json));
    }
    ReadFields(document, contents);
    return contents;
}

std::string TextOf(const ContentRow& row, std::size_t first, std::size_t count) {
    std::string text;
    for (std::size_t index = first; index < first + count; ++index) {
        const ContentCharacter& character = row.characters[index];
        const bool continues = index != first && row.characters[index - 1].code != ' ';
        if (continues && base::IsWordGap(row.bottom - row.top, row.characters[index - 1].x, character.x)) text += ' ';
        base::AppendUtf8(text, static_cast<char32_t>(character.code & 0xFF));
    }
    return text;
}

}  // namespace zel::compare
