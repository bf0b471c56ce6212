#include "host/fontkit/kit_metrics.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "base/utf8.h"
#include "host/document/indented_json.h"
#include "host/document/json_version.h"

namespace zel::fontkit {

namespace {

using Json = nlohmann::ordered_json;

const char* NameOf(ArtKind kind) noexcept {
    constexpr const char* kNames[] = {"blank", "run-coded", "stored"};
    return kNames[static_cast<int>(kind)];
}

std::string Latin1Character(unsigned code) {
    const auto byte = static_cast<char>(code);
    return base::Utf8FromLatin1({&byte, 1});
}

Json SetsJson(const FontArt& art, const KitNames& names) {
    Json sets = Json::array();
    for (unsigned set = 0; set < art.sets.size(); ++set) {
        sets.push_back({{"set", set},
                        {"face", HexColour(art.sets[set][kFaceEntry])},
                        {"edge", HexColour(art.sets[set][kEdgeEntry])},
                        {"text", names.BmFont(set, "fnt")},
                        {"xml", names.BmFont(set, "xml")}});
    }
    return sets;
}

Json PagesJson(const FontArt& art, const Atlas& atlas, const KitNames& names) {
    Json pages = Json::array();
    const auto plane = [&](bool exists, const char* content, int page) {
        return exists ? Json(names.Plane(content, page)) : Json(nullptr);
    };
    const bool coded = HasKind(art, ArtKind::kRunCoded);
    for (int page = 0; page < atlas.page_count; ++page) {
        Json coloured = Json::array();
        for (unsigned set = 0; set < art.sets.size(); ++set) coloured.push_back(names.Page(set, page));
        pages.push_back({{"coloured", std::move(coloured)},
                         {"index", plane(coded, "index", page)},
                         {"index_high", plane(HasHighPlane(art), "index-high", page)},
                         {"level", plane(coded, "level", page)},
                         {"stored", plane(HasKind(art, ArtKind::kStored), "stored", page)}});
    }
    return pages;
}

Json PalettesJson(const FontArt& art) {
    Json palettes = Json::array();
    for (std::size_t set = 0; set < art.sets.size(); ++set) {
        Json palette = Json::array();
        if (HasKind(art, ArtKind::kRunCoded)) {
            for (const SetColours& colours : art.colours) palette.push_back(HexColour(colours[set]));
        }
        palettes.push_back(std::move(palette));
    }
    return palettes;
}

Json GlyphsJson(const FontArt& art, const Atlas& atlas, const KitNames& names) {
    Json glyphs = Json::array();
    for (std::size_t index = 0; index < art.glyphs.size(); ++index) {
        const GlyphArt& glyph = art.glyphs[index];
        const AtlasPlace at = atlas.places[index].value_or(AtlasPlace{});
        glyphs.push_back({{"code", glyph.code},
                          {"character", Latin1Character(glyph.code)},
                          {"kind", NameOf(glyph.kind)},
                          {"page", at.page},
                          {"x", at.x},
                          {"y", at.y},
                          {"width", glyph.width},
                          {"height", glyph.height},
                          {"top", glyph.top},
                          {"x_offset", 0},
                          {"y_offset", glyph.IsBlank() ? 0 : art.base - glyph.top},
                          {"advance", glyph.advance},
                          {"file", glyph.IsBlank() ? Json(nullptr) : Json(names.Glyph(glyph.code))}});
    }
    return glyphs;
}

Json LostJson(const FontArt& art) {
    Json lost = Json::array();
    for (const LostGlyph& glyph : art.lost) lost.push_back({{"code", glyph.code}, {"reason", glyph.reason}});
    return lost;
}

}  // namespace

bool HasHighPlane(const FontArt& art) noexcept {
    return HasKind(art, ArtKind::kRunCoded) && art.colours.size() > 256;
}

bool HasKind(const FontArt& art, ArtKind kind) noexcept {
    return std::ranges::find(art.glyphs, kind, &GlyphArt::kind) != art.glyphs.end();
}

std::string KitMetricsJson(const FontArt& art, const Atlas& atlas, const KitNames& names, unsigned glyph_set,
                           bool has_true_type) {
    const Json metrics = {{"version", document::kJsonVersion},
                          {"name", art.name},
                          {"font_height", art.font_height},
                          {"line_height", art.line_height},
                          {"base", art.base},
                          {"alpha", "straight"},
                          {"page_width", atlas.page_width},
                          {"page_height", atlas.page_height},
                          {"glyph_set", glyph_set},
                          {"true_type", has_true_type ? Json(names.TrueType()) : Json(nullptr)},
                          {"pixel_true_type", has_true_type ? Json(names.PixelTrueType()) : Json(nullptr)},
                          {"sets", SetsJson(art, names)},
                          {"pages", PagesJson(art, atlas, names)},
                          {"palettes", PalettesJson(art)},
                          {"glyphs", GlyphsJson(art, atlas, names)},
                          {"lost", LostJson(art)}};
    return document::IndentedJson(metrics.dump(-1, ' ', false, Json::error_handler_t::replace)) + "\n";
}

}  // namespace zel::fontkit
