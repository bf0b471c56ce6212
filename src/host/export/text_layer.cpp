#include "host/export/text_layer.h"

#include <algorithm>
#include <string_view>

#include <nlohmann/json.hpp>

#include "host/export/utf8.h"

namespace zel::exporter {

namespace {

using Json = nlohmann::ordered_json;

constexpr int kFarthest = 4096;  // pixels or lines from the frame's corner

const Json& Member(const Json& json, const char* key) {
    static const Json none;
    const auto found = json.is_object() ? json.find(key) : json.end();
    return json.is_object() && found != json.end() ? *found : none;
}

int Number(const Json& json, const char* key) {
    const Json& value = Member(json, key);
    if (!value.is_number()) return 0;
    return static_cast<int>(std::clamp(value.get<double>(), double{-kFarthest}, double{kFarthest}));
}

/// The rows by their numbers, each without characters.
std::vector<PlacedRow> EmptyRows(const Json& document) {
    std::vector<PlacedRow> rows;
    for (const Json& row : Member(document, "rows")) {
        rows.push_back({Number(row, "y") + Number(row, "top"), std::max(Number(row, "depth"), 4), {}});
    }
    return rows;
}

/// Width of a character that none follows: its own step, which is its glyph's width; one in text form has none.
int LastWidth(const Json& character, const PlacedRow& row) {
    const int step = Number(character, "step");
    return step > 0 ? step : row.height / 2;
}

void Append(PlacedRow& row, const Json& character, std::string text) {
    const int x = Number(character, "x");
    if (!row.characters.empty()) {
        PlacedCharacter& before = row.characters.back();
        if (x > before.x) before.width = std::min(x - before.x, std::max(row.height, 1));
    }
    row.characters.push_back({std::move(text), x, LastWidth(character, row)});
}

}  // namespace

std::vector<PlacedRow> TextLayer(const Json& document) {
    std::vector<PlacedRow> rows = EmptyRows(document);
    for (const Json& character : Member(document, "characters")) {
        const Json& text = Member(character, "text");
        const Json& row = Member(character, "row");
        if (!text.is_string() || !row.is_number_unsigned() || row.get<std::uint64_t>() >= rows.size()) continue;
        Append(rows[row.get<std::size_t>()], character, ValidUtf8(text.get_ref<const std::string&>()));
    }
    std::erase_if(rows, [](const PlacedRow& row) { return row.characters.empty(); });
    return rows;
}

}  // namespace zel::exporter
