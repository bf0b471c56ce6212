#include "host/picture/text_face.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <string>
#include <tuple>

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_GLYPH_H
#include FT_STROKER_H
#include FT_TRUETYPE_TABLES_H

#include "host/picture/text_edge.h"
#include "module/contract/records/edge.h"

namespace zel::picture {

namespace {

/// A taller character covers the whole picture many times over; heights come from a file.
constexpr LONG kMaxHeight = 2048;
/// Glyphs that are kept for further use; a message of ordinary text needs a hundredth of it.
constexpr std::size_t kKeptCoverage = std::size_t{32} << 20;

/// Frees a handle of one of the libraries.
template <auto Free>
struct Freer {
    template <typename Handle>
    void operator()(Handle* handle) const noexcept {
        Free(handle);
    }
};
using LibraryHandle = std::unique_ptr<FT_LibraryRec_, Freer<FT_Done_FreeType>>;
using FaceHandle = std::unique_ptr<FT_FaceRec_, Freer<FT_Done_Face>>;
using StrokerHandle = std::unique_ptr<FT_StrokerRec_, Freer<FT_Stroker_Done>>;
using GlyphHandle = std::unique_ptr<FT_GlyphRec_, Freer<FT_Done_Glyph>>;
using PatternHandle = std::unique_ptr<FcPattern, Freer<FcPatternDestroy>>;
using ConfigHandle = std::unique_ptr<FcConfig, Freer<FcConfigDestroy>>;

/// What a typeface is looked for by.
struct Wanted {
    std::string name;
    int weight = 400;
    bool italic = false;
    auto operator<=>(const Wanted&) const = default;
};

Wanted WantedFace(const LOGFONT& font) {
    std::string name(font.lfFaceName, std::find(std::begin(font.lfFaceName), std::end(font.lfFaceName), '\0'));
    name.erase(0, std::min(name.find_first_not_of(' '), name.size()));  // a face found by number is right-justified
    return {std::move(name), font.lfWeight, font.lfItalic != 0};
}

struct FaceFile {
    std::string path;
    int index = 0;
};

std::optional<FaceFile> FindFaceFile(FcConfig* config, const Wanted& wanted) {
    const PatternHandle pattern(FcPatternCreate());
    if (!pattern) return std::nullopt;
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(wanted.name.c_str()));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, FcWeightFromOpenType(std::clamp(wanted.weight, 1, 1000)));
    FcPatternAddInteger(pattern.get(), FC_SLANT, wanted.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    FcConfigSubstitute(config, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    const PatternHandle match(FcFontMatch(config, pattern.get(), &result));
    FcChar8* path = nullptr;
    FaceFile file;
    if (!match || FcPatternGetString(match.get(), FC_FILE, 0, &path) != FcResultMatch) return std::nullopt;
    if (FcPatternGetInteger(match.get(), FC_INDEX, 0, &file.index) != FcResultMatch) file.index = 0;
    file.path = reinterpret_cast<const char*>(path);
    return file;
}

/// Sets the size of a face from a description's height.
bool SetHeight(FT_Face face, LONG height) {
    const LONG lines = std::clamp(height, -kMaxHeight, kMaxHeight);
    double em = -lines;
    if (lines > 0) {
        const auto* os2 = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
        int cell = os2 != nullptr ? os2->usWinAscent + os2->usWinDescent : 0;
        if (cell == 0) cell = face->ascender - face->descender;
        if (cell <= 0) return false;
        em = static_cast<double>(lines) * face->units_per_EM / cell;
    }
    const auto size = FT_F26Dot6{std::lround(em * 64)};
    return size > 0 && FT_Set_Char_Size(face, 0, size, 72, 72) == 0;
}

/// Draws an outline, which is consumed; an empty coverage when it can't be drawn.
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
        const std::uint8_t* line = bitmap.buffer + static_cast<std::ptrdiff_t>(row) * bitmap.pitch;
        coverage.bytes.insert(coverage.bytes.end(), line, line + bitmap.width);
    }
    return coverage;
}

}  // namespace

class TextFaces::Library {
  public:
    Library() {
        FT_Library library = nullptr;
        if (FT_Init_FreeType(&library) != 0) return;
        m_library.reset(library);
        FT_Stroker stroker = nullptr;
        if (FT_Stroker_New(library, &stroker) == 0) m_stroker.reset(stroker);
        m_config.reset(FcInitLoadConfigAndFonts());
    }

    const TextGlyph* Get(const LOGFONT& font, const tag_CharInf& info, unsigned character) {
        const bool has_edge = HasEdge(info.edge_type) && info.edge_size > 0;
        const Key key(WantedFace(font), font.lfHeight, has_edge ? info.edge_type : 0, info.edge_angle, info.edge_size,
                      character);
        if (const auto found = m_glyphs.find(key); found != m_glyphs.end())
            return found->second ? &*found->second : nullptr;
        if (m_bytes > kKeptCoverage) {
            m_glyphs.clear();
            m_bytes = 0;
        }
        std::optional<TextGlyph>& glyph = m_glyphs[key];
        glyph = Draw(std::get<0>(key), font.lfHeight, has_edge ? &info : nullptr, character);
        if (glyph) m_bytes += glyph->face.bytes.size() + glyph->edge.bytes.size();
        return glyph ? &*glyph : nullptr;
    }

  private:
    using Key = std::tuple<Wanted, LONG, int, int, int, unsigned>;

    FT_Face Face(const Wanted& wanted) {
        const auto [found, is_new] = m_faces.try_emplace(wanted);
        if (is_new && m_library && m_config) {
            const auto file = FindFaceFile(m_config.get(), wanted);
            FT_Face face = nullptr;
            if (file && FT_New_Face(m_library.get(), file->path.c_str(), file->index, &face) == 0)
                found->second.reset(face);
        }
        return found->second.get();
    }

    /// @param edge  record that tells the edge, null for none.
    std::optional<TextGlyph> Draw(const Wanted& wanted, LONG height, const tag_CharInf* edge, unsigned character) {
        FT_Face face = Face(wanted);
        if (face == nullptr || height == 0 || !SetHeight(face, height)) return std::nullopt;
        if (FT_Load_Char(face, character, FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP) != 0) return std::nullopt;
        FT_Glyph loaded = nullptr;
        if (FT_Get_Glyph(face->glyph, &loaded) != 0) return std::nullopt;
        GlyphHandle outline(loaded);
        TextGlyph glyph;
        if (edge != nullptr && EdgeType{edge->edge_type} == EdgeType::kBorder)
            glyph.edge = Border(*outline, edge->edge_size);
        glyph.face = Render(std::move(outline));
        if (edge != nullptr && EdgeType{edge->edge_type} == EdgeType::kShadow) {
            glyph.edge = DrawnOutAlong(glyph.face, WayOfEdge(edge->edge_angle, edge->edge_size));
        } else if (edge != nullptr && EdgeType{edge->edge_type} == EdgeType::kOffset) {
            glyph.edge = MovedBy(glyph.face, WayOfEdge(edge->edge_angle, edge->edge_size));
        }
        return glyph;
    }

    Coverage Border(FT_GlyphRec_& outline, int size) {
        if (!m_stroker) return {};
        FT_Stroker_Set(m_stroker.get(), FT_Fixed{size} * 64, FT_STROKER_LINECAP_ROUND, FT_STROKER_LINEJOIN_ROUND, 0);
        FT_Glyph copy = nullptr;
        if (FT_Glyph_Copy(&outline, &copy) != 0) return {};
        const FT_Error error = FT_Glyph_StrokeBorder(&copy, m_stroker.get(), 0, 1);
        GlyphHandle border(copy);
        return error == 0 ? Render(std::move(border)) : Coverage{};
    }

    LibraryHandle m_library;
    StrokerHandle m_stroker;
    ConfigHandle m_config;
    std::map<Wanted, FaceHandle> m_faces;
    std::map<Key, std::optional<TextGlyph>> m_glyphs;
    std::size_t m_bytes = 0;
};

TextFaces::TextFaces() = default;
TextFaces::~TextFaces() = default;

const TextGlyph* TextFaces::Get(const LOGFONT& font, const tag_CharInf& info, unsigned character) {
    if (!m_library) m_library = std::make_unique<Library>();
    return m_library->Get(font, info, character);
}

}  // namespace zel::picture
