#include "host/live/form_json.h"

#include <algorithm>
#include <initializer_list>

#include <nlohmann/json.hpp>

#include "base/base64.h"
#include "base/utf8.h"
#include "module/contract/records/char_entry.h"
#include "module/contract/records/msg_row.h"
#include "module/contract/records/tab_field.h"

namespace zel::live {

namespace {

using Json = nlohmann::ordered_json;

/// Of the form that the scripts read.
constexpr int kFormVersion = 1;
constexpr int kPictureWidth = 720;
/// As in host/picture/picture_composer.cpp: pixels that all characters of a message may cover together.
constexpr int kMostCovered = 16 << 20;
/// The largest position in a file, which has 10 bits.
constexpr int kLastPosition = 1023;

Json Limits() {
    return {{"pixels", kMostCovered},
            {"rowCharacters", kRowChars},
            {"lastX", kLastPosition},
            {"lastY", kLastPosition},
            {"xOffset", kXOffset}};
}

Json ColourSets(const tag_palete& palette) {
    Json sets = Json::array();
    for (const auto& set : palette.colour_sets) {
        Json colours = Json::array();
        for (const std::uint32_t entry : set) {
            const COLORREF colour = PackColour(entry);
            colours.push_back((colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF));
        }
        sets.push_back(std::move(colours));
    }
    return sets;
}

Json Slots(const LiveForm& form) {
    Json slots = Json::array();
    for (const auto& slot : form.slots) slots.push_back(slot ? static_cast<int>(*slot) : -1);
    return slots;
}

Json Glyphs(const std::map<unsigned, LiveGlyph>& glyphs) {
    Json object = Json::object();
    for (const auto& [code, glyph] : glyphs)
        object[std::to_string(code)] = {glyph.width, glyph.height, base::Base64(glyph.stream)};
    return object;
}

/// Whether a text can have a code: fill_fields.cpp has the same rule.
bool IsSettable(unsigned code, const fill::FontMetrics& font) {
    return code == fill::kBlank || (!base::IsControl(code) && font.glyphs[code].has_glyph);
}

Json FontJson(const LiveFont& font) {
    const fill::FontMetrics& metrics = font.metrics;
    Json json = {{"number", metrics.number},
                 {"name", metrics.name},
                 {"rowTop", metrics.row_top},
                 {"rowBottom", metrics.row_bottom},
                 {"keepsLimits", metrics.keeps_row_limits},
                 {"topOffset", metrics.top_offset},
                 {"highestTop", metrics.highest_top}};
    Json tops = Json::array(), advances = Json::array(), settable = Json::array();
    for (unsigned code = 0; code < kDirectoryEntries; ++code) {
        tops.push_back(metrics.glyphs[code].top);
        advances.push_back(metrics.glyphs[code].advance);
        if (IsSettable(code, metrics)) settable.push_back(code);
    }
    json["tops"] = std::move(tops);
    if (font.is_for_fields) {
        json["advances"] = std::move(advances);
        json["settable"] = std::move(settable);
    }
    Json classes = Json::array();
    for (const PixelClass& pixel : font.classes) {
        classes.push_back(pixel.index);
        classes.push_back(pixel.level);
    }
    json["classes"] = std::move(classes);
    json["mixed"] = font.mixed;
    json["glyphs"] = Glyphs(font.run_coded);
    json["pictures"] = Glyphs(font.stored);
    return json;
}

Json RowJson(const LiveRow& row) {
    Json cells = Json::array();
    for (const LiveRow::Cell& cell : row.cells)
        cells.push_back({cell.x, cell.y, cell.colour_set, cell.slot, cell.code, cell.next});
    return {{"y", row.y},         {"top", row.top},           {"bottom", row.bottom}, {"empty", row.is_empty},
            {"first", row.first}, {"cells", std::move(cells)}};
}

Json FieldJson(const LiveField& live, std::size_t index) {
    const fill::Field& field = live.field;
    return {{"key", KeyOf(index)},      {"name", field.name}, {"address", field.address}, {"row", field.row},
            {"start", field.start},     {"end", field.end},   {"slot", field.slot},       {"set", field.colour_set},
            {"tabSlot", live.tab_slot}, {"text", live.text},  {"fault", live.fault}};
}

/// @param json  of an item and its index.
template <class Item, class Make>
Json List(const std::vector<Item>& items, Make json) {
    Json list = Json::array();
    for (std::size_t n = 0; n < items.size(); ++n) list.push_back(json(items[n], n));
    return list;
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

}  // namespace

std::string KeyOf(std::size_t field) {
    return "f" + std::to_string(field);
}

Json FormJson(const LiveForm& form, const LiveLook& look) {
    const PixelAspect aspect = PixelAspectOf(form.standard);
    Json json = {{"version", kFormVersion},
                 {"title", look.title},
                 {"width", kPictureWidth},
                 {"height", ActiveLines(form.standard)},
                 {"pixelAspect", {aspect.width, aspect.height}},
                 {"fit", look.fit},
                 {"fade", {{"in", look.fade_in_ms}, {"out", look.fade_out_ms}}},
                 {"limits", Limits()}};
    if (!form.picture.empty()) json["picture"] = "data:image/png;base64," + base::Base64(form.picture);
    json["colourSets"] = ColourSets(form.palette);
    json["slots"] = Slots(form);
    json["fonts"] = List(form.fonts, [](const LiveFont& font, std::size_t) { return FontJson(font); });
    json["rows"] = List(form.rows, [](const LiveRow& row, std::size_t) { return RowJson(row); });
    json["fields"] = List(form.fields, FieldJson);
    return json;
}

std::string ScriptText(const Json& json) {
    std::string text = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    for (const auto& [from, to] : std::initializer_list<std::pair<std::string_view, std::string_view>>{
             {"<", "\\u003c"}, {">", "\\u003e"}, {"&", "\\u0026"}, {"\u2028", "\\u2028"}, {"\u2029", "\\u2029"}}) {
        ReplaceAll(text, from, to);
    }
    return text;
}

}  // namespace zel::live
