#include "host/picture/text_renderer.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_GLYPH_H
#include FT_STROKER_H
#include FT_TRUETYPE_TABLES_H

#include "host/picture/text_edge.h"
#include "host/picture/typeface_file.h"
#include "module/contract/records/edge.h"

namespace zel::picture {

namespace {

/// In pixels. A taller character would cover the whole picture many times over. Heights come from files.
constexpr LONG kMaxHeight = 2048;
/// Bytes of the cached glyphs; a message of ordinary text needs a hundredth of them.
constexpr std::size_t kCacheSize = std::size_t{32} << 20;
/// Bytes of the glyphs that one message may draw, 48 times the pixels of its picture.
constexpr std::size_t kMessageBytes = std::size_t{16} << 20;

/// Frees a handle of the library.
template <auto Free>
struct Deleter {
    template <typename Handle>
    void operator()(Handle* handle) const noexcept {
        Free(handle);
    }
};
using LibraryHandle = std::unique_ptr<FT_LibraryRec_, Deleter<FT_Done_FreeType>>;
using FaceHandle = std::unique_ptr<FT_FaceRec_, Deleter<FT_Done_Face>>;
using StrokerHandle = std::unique_ptr<FT_StrokerRec_, Deleter<FT_Stroker_Done>>;
using GlyphHandle = std::unique_ptr<FT_GlyphRec_, Deleter<FT_Done_Glyph>>;

/// Edge of a character, from its record.
struct Edge {
    /// kNone in every record that has no edge, whatever its other fields are.
    EdgeType type = EdgeType::kNone;
    int angle = 0;
    int size = 0;
    auto operator<=>(const Edge&) const = default;
};

Edge EdgeOf(const tag_CharInf& info) noexcept {
    if (!HasEdge(info.edge_type) || info.edge_size <= 0) return {};
    return {EdgeType{info.edge_type}, info.edge_angle, info.edge_size};
}

/// Sets the size of a face to the height of a LOGFONT, see TextRenderer::Get.
bool SetHeight(FT_Face face, LONG height) {
    const LONG pixels = std::clamp(height, -kMaxHeight, kMaxHeight);
    double em = -pixels;
    if (pixels > 0) {
        const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
        int cell = os2 != nullptr ? os2->usWinAscent + os2->usWinDescent : 0;
        if (cell == 0) cell = face->ascender - face->descender;
        if (cell <= 0) return false;
        em = static_cast<double>(pixels) * face->units_per_EM / cell;
    }
    const auto size = FT_F26Dot6{std::lround(em * 64)};
    return size > 0 && FT_Set_Char_Size(face, 0, size, 72, 72) == 0;
}

/// Draws an outline; an empty coverage when that fails.
Coverage Render(GlyphHandle glyph) {
    FT_Glyph image = glyph.release();
    const FT_Error error = FT_Glyph_To_Bitmap(&image, FT_RENDER_MODE_NORMAL, nullptr, 1);
    const GlyphHandle drawn(image);
    if (error != 0) return {};
    const auto& bitmap_glyph = *reinterpret_cast<FT_BitmapGlyph>(image);
    const FT_Bitmap& bitmap = bitmap_glyph.bitmap;
    Coverage coverage{
        bitmap_glyph.left, bitmap_glyph.top, static_cast<int>(bitmap.width), static_cast<int>(bitmap.rows), {}};
    coverage.bytes.reserve(std::size_t{bitmap.width} * bitmap.rows);
    for (unsigned row = 0; row < bitmap.rows; ++row) {
        const std::uint8_t* pixels = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
        coverage.bytes.insert(coverage.bytes.end(), pixels, pixels + bitmap.width);
    }
    return coverage;
}

/// @return null when the face has no such character.
GlyphHandle LoadOutline(FT_Face face, unsigned character) {
    FT_Glyph outline = nullptr;
    if (FT_Load_Char(face, character, FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP) != 0) return nullptr;
    if (FT_Get_Glyph(face->glyph, &outline) != 0) return nullptr;
    return GlyphHandle(outline);
}

/// The outline, widened on every side by `size` pixels.
Coverage Border(FT_Stroker stroker, FT_GlyphRec_& outline, int size) {
    if (stroker == nullptr) return {};
    FT_Stroker_Set(stroker, FT_Fixed{size} * 64, FT_STROKER_LINECAP_ROUND, FT_STROKER_LINEJOIN_ROUND, 0);
    FT_Glyph copy = nullptr;
    if (FT_Glyph_Copy(&outline, &copy) != 0) return {};
    const FT_Error error = FT_Glyph_StrokeBorder(&copy, stroker, 0, 1);
    GlyphHandle border(copy);
    return error == 0 ? Render(std::move(border)) : Coverage{};
}

TextGlyph Draw(GlyphHandle outline, const Edge& edge, FT_Stroker stroker) {
    TextGlyph glyph;
    if (edge.type == EdgeType::kBorder) glyph.edge = Border(stroker, *outline, edge.size);
    glyph.face = Render(std::move(outline));
    if (edge.type == EdgeType::kShadow) glyph.edge = Extruded(glyph.face, EdgeVectorOf(edge.angle, edge.size));
    if (edge.type == EdgeType::kOffset) glyph.edge = Shifted(glyph.face, EdgeVectorOf(edge.angle, edge.size));
    return glyph;
}

}  // namespace

class TextRenderer::Cache {
  public:
    Cache() {
        FT_Library library = nullptr;
        if (FT_Init_FreeType(&library) != 0) return;
        m_library.reset(library);
        FT_Stroker stroker = nullptr;
        if (FT_Stroker_New(library, &stroker) == 0) m_stroker.reset(stroker);
    }

    /// @param left  bytes that may still be drawn; receives what remains.
    const TextGlyph* Get(const LOGFONT& font, const tag_CharInf& info, unsigned character, std::size_t& left) {
        const Key key(TypefaceQueryOf(font), font.lfHeight, EdgeOf(info), character);
        if (const auto found = m_glyphs.find(key); found != m_glyphs.end()) return PointerTo(found->second);
        if (left == 0) return nullptr;
        if (m_bytes > kCacheSize) {
            m_glyphs.clear();
            m_bytes = 0;
        }
        std::optional<TextGlyph>& glyph = m_glyphs[key];
        glyph = Make(key);
        const std::size_t bytes = glyph ? glyph->face.bytes.size() + glyph->edge.bytes.size() : 0;
        m_bytes += bytes;
        left -= std::min(bytes, left);
        return PointerTo(glyph);
    }

  private:
    /// Typeface, height, edge, character.
    using Key = std::tuple<TypefaceQuery, LONG, Edge, unsigned>;

    static const TextGlyph* PointerTo(const std::optional<TextGlyph>& glyph) noexcept {
        return glyph ? &*glyph : nullptr;
    }

    FT_Face Face(const TypefaceQuery& query) {
        const auto [found, is_new] = m_faces.try_emplace(query);
        if (is_new && m_library) {
            const auto file = m_typefaces.Find(query);
            FT_Face face = nullptr;
            if (file && FT_New_Face(m_library.get(), file->path.c_str(), file->index, &face) == 0)
                found->second.reset(face);
        }
        return found->second.get();
    }

    std::optional<TextGlyph> Make(const Key& key) {
        const auto& [query, height, edge, character] = key;
        FT_Face face = Face(query);
        if (face == nullptr || height == 0 || !SetHeight(face, height)) return std::nullopt;
        GlyphHandle outline = LoadOutline(face, character);
        if (!outline) return std::nullopt;
        return Draw(std::move(outline), edge, m_stroker.get());
    }

    LibraryHandle m_library;
    StrokerHandle m_stroker;
    TypefaceFinder m_typefaces;
    std::map<TypefaceQuery, FaceHandle> m_faces;
    std::map<Key, std::optional<TextGlyph>> m_glyphs;
    std::size_t m_bytes = 0;
};

TextRenderer::TextRenderer() = default;
TextRenderer::~TextRenderer() = default;

const TextGlyph* TextRenderer::Get(const LOGFONT& font, const tag_CharInf& info, unsigned character) {
    if (!m_cache) m_cache = std::make_unique<Cache>();
    return m_cache->Get(font, info, character, m_left);
}

void TextRenderer::BeginMessage() noexcept {
    m_left = kMessageBytes;
}

}  // namespace zel::picture
