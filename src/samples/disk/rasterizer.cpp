#include "samples/disk/rasterizer.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>
#include <type_traits>

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

namespace zel::samples {
namespace {

template <auto Free>
struct Freer {
    template <typename T>
    void operator()(T* object) const {
        Free(object);
    }
};
using Config = std::unique_ptr<FcConfig, Freer<FcConfigDestroy>>;
using Pattern = std::unique_ptr<FcPattern, Freer<FcPatternDestroy>>;
using Library = std::unique_ptr<std::remove_pointer_t<FT_Library>, Freer<FT_Done_FreeType>>;
using FaceHandle = std::unique_ptr<std::remove_pointer_t<FT_Face>, Freer<FT_Done_Face>>;

const FcChar8* FcText(const std::string& text) {
    return reinterpret_cast<const FcChar8*>(text.c_str());
}

struct FoundFile {
    std::string path;
    int index = 0;
};

bool HasFamily(FcPattern* pattern, std::string_view family) {
    FcChar8* name = nullptr;
    for (int n = 0; FcPatternGetString(pattern, FC_FAMILY, n, &name) == FcResultMatch; ++n) {
        if (family == reinterpret_cast<const char*>(name)) return true;
    }
    return false;
}

/// The file of exactly this typeface; fontconfig may propose a substitute.
FoundFile FindTypeface(const FaceChoice& choice) {
    // A private configuration: fontconfig never frees the shared one.
    static const Config config(FcInitLoadConfigAndFonts());
    const Pattern wish(FcPatternCreate());
    FcPatternAddString(wish.get(), FC_FAMILY, FcText(choice.family));
    FcPatternAddInteger(wish.get(), FC_WEIGHT, choice.bold ? FC_WEIGHT_BOLD : FC_WEIGHT_NORMAL);
    FcPatternAddInteger(wish.get(), FC_SLANT, FC_SLANT_ROMAN);
    FcPatternAddInteger(wish.get(), FC_WIDTH, FC_WIDTH_NORMAL);
    FcConfigSubstitute(config.get(), wish.get(), FcMatchPattern);
    FcDefaultSubstitute(wish.get());
    FcResult result = FcResultNoMatch;
    const Pattern match(FcFontMatch(config.get(), wish.get(), &result));
    FcChar8* path = nullptr;
    if (match == nullptr || !HasFamily(match.get(), choice.family) ||
        FcPatternGetString(match.get(), FC_FILE, 0, &path) != FcResultMatch) {
        throw std::runtime_error("the typeface " + choice.family + " isn't installed (package fonts-dejavu-core)");
    }
    FoundFile found{reinterpret_cast<const char*>(path), 0};
    FcPatternGetInteger(match.get(), FC_INDEX, 0, &found.index);
    return found;
}

int Round26Dot6(FT_Pos value) {
    return static_cast<int>((value + 32) >> 6);
}

files::Coverage CoverageOf(const FT_Bitmap& bitmap) {
    files::Coverage coverage{bitmap.width, bitmap.rows, {}};
    for (unsigned y = 0; y < bitmap.rows; ++y) {
        const unsigned char* line = bitmap.buffer + static_cast<std::ptrdiff_t>(y) * bitmap.pitch;
        coverage.alpha.insert(coverage.alpha.end(), line, line + bitmap.width);
    }
    return coverage;
}

}  // namespace

struct Rasterizer::Face {
    std::string name;
    Library library;
    FaceHandle face;
    bool slanted = false;

    void Check(FT_Error error, const char* task) const {
        if (error != 0)
            throw std::runtime_error(name + ": " + task + " failed, FreeType error " + std::to_string(error));
    }
};

Rasterizer::Rasterizer(const FaceChoice& choice) : m_face(std::make_unique<Face>()) {
    const FoundFile file = FindTypeface(choice);
    m_face->name = file.path;
    m_face->slanted = choice.slanted;
    FT_Library library = nullptr;
    m_face->Check(FT_Init_FreeType(&library), "starting FreeType");
    m_face->library.reset(library);
    FT_Face face = nullptr;
    m_face->Check(FT_New_Face(library, file.path.c_str(), file.index, &face), "opening");
    m_face->face.reset(face);
    m_face->Check(FT_Set_Pixel_Sizes(face, choice.em * choice.width_percent / 100, choice.em), "setting the size");
}

Rasterizer::~Rasterizer() = default;
Rasterizer::Rasterizer(Rasterizer&&) noexcept = default;
Rasterizer& Rasterizer::operator=(Rasterizer&&) noexcept = default;

RasterGlyph Rasterizer::Draw(char32_t character) const {
    FT_Face face = m_face->face.get();
    const FT_UInt index = FT_Get_Char_Index(face, character);
    if (index == 0) throw std::runtime_error(m_face->name + ": no glyph for character " + std::to_string(character));
    m_face->Check(FT_Load_Glyph(face, index, FT_LOAD_TARGET_LIGHT), "loading a glyph");
    if (m_face->slanted) {
        FT_Matrix lean{0x10000, 0x3600, 0, 0x10000};  // 12 degrees, in 16.16
        FT_Outline_Transform(&face->glyph->outline, &lean);
    }
    m_face->Check(FT_Render_Glyph(face->glyph, FT_RENDER_MODE_NORMAL), "drawing a glyph");
    return {CoverageOf(face->glyph->bitmap), face->glyph->bitmap_left, face->glyph->bitmap_top,
            Round26Dot6(face->glyph->advance.x)};
}

int Rasterizer::Kerning(char32_t left, char32_t right) const {
    FT_Face face = m_face->face.get();
    FT_Vector kerning{};
    const FT_Error error = FT_Get_Kerning(face, FT_Get_Char_Index(face, left), FT_Get_Char_Index(face, right),
                                          FT_KERNING_DEFAULT, &kerning);
    return error == 0 ? Round26Dot6(kerning.x) : 0;
}

}  // namespace zel::samples
