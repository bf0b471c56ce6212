#include "host/fontkit/font_kit.h"

#include <utility>

#include "host/fontkit/bmfont.h"
#include "host/fontkit/kit_metrics.h"
#include "host/fontkit/kit_png.h"

namespace zel::fontkit {

FontKit::FontKit(FontArt art, std::string stem, const KitOptions& options)
    : m_art(std::move(art)), m_names(std::move(stem)), m_options(options), m_atlas(ArrangeGlyphs(m_art)) {
    if (options.true_type) {
        const FontFileNames names{m_names.Stem(), options.family_end};
        TrueTypeFile layered = LayeredTrueType(m_art, names, options.aspect);
        m_layered = std::move(layered.bytes);
        m_pixels = PixelTrueType(m_art, names, options.set).bytes;
        // Both trace the same planes, so the second loses no other glyph.
        for (LostGlyph& lost : layered.lost) m_art.lost.push_back(std::move(lost));
    }
    ForEachFile([this](std::string name, const auto&) { m_file_names.push_back(std::move(name)); });
}

// The pictures are made by calls, so that a list of the names alone makes none.
template <typename Use>
void FontKit::ForEachFile(Use use) const {
    const auto sets = static_cast<unsigned>(m_art.sets.size());
    for (unsigned set = 0; set < sets; ++set) {
        use(m_names.BmFont(set, "fnt"), [&] { return BmFontText(m_art, m_atlas, m_names, set); });
        use(m_names.BmFont(set, "xml"), [&] { return BmFontXml(m_art, m_atlas, m_names, set); });
        for (int page = 0; page < m_atlas.page_count; ++page)
            use(m_names.Page(set, page),
                [&] { return KitPng(ColouredPage(m_art, m_atlas, page, set), KitPngType::kColoured); });
    }
    const auto plane = [&](const char* name, int page, PlaneContent content) {
        use(m_names.Plane(name, page),
            [&] { return KitPng(PlanePage(m_art, m_atlas, page, content), KitPngType::kGrey); });
    };
    for (int page = 0; page < m_atlas.page_count; ++page) {
        if (HasKind(m_art, ArtKind::kRunCoded)) {
            plane("index", page, PlaneContent::kEntryLow);
            if (HasHighPlane(m_art)) plane("index-high", page, PlaneContent::kEntryHigh);
            plane("level", page, PlaneContent::kLevel);
        }
        if (HasKind(m_art, ArtKind::kStored))
            use(m_names.Plane("stored", page),
                [&] { return KitPng(StoredPage(m_art, m_atlas, page), KitPngType::kColoured); });
    }
    for (const GlyphArt& glyph : m_art.glyphs) {
        if (glyph.IsBlank()) continue;
        use(m_names.Glyph(glyph.code),
            [&] { return KitPng(GlyphPicture(m_art, glyph, m_options.set), KitPngType::kColoured); });
    }
    if (m_options.true_type) {
        use(m_names.TrueType(), [&] { return m_layered; });
        use(m_names.PixelTrueType(), [&] { return m_pixels; });
    }
    // Last, so that a kit with metrics is complete.
    use(m_names.Metrics(), [&] { return KitMetricsJson(m_art, m_atlas, m_names, m_options.set, m_options.true_type); });
}

void FontKit::Write(const std::function<void(const std::string& name, std::string_view bytes)>& write) const {
    ForEachFile([&write](const std::string& name, const auto& make) { write(name, make()); });
}

}  // namespace zel::fontkit
