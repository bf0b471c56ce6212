#include "host/picture/typeface_file.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <fontconfig/fontconfig.h>

namespace zel::picture {

namespace {

struct DestroyPattern {
    void operator()(FcPattern* pattern) const noexcept { FcPatternDestroy(pattern); }
};
using PatternHandle = std::unique_ptr<FcPattern, DestroyPattern>;

/// @return null when out of memory.
PatternHandle PatternOf(const TypefaceQuery& query) {
    PatternHandle pattern(FcPatternCreate());
    if (!pattern) return pattern;
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(query.family.c_str()));
    FcPatternAddInteger(pattern.get(), FC_WEIGHT, FcWeightFromOpenType(std::clamp(query.weight, 1, 1000)));
    FcPatternAddInteger(pattern.get(), FC_SLANT, query.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    return pattern;
}

}  // namespace

TypefaceQuery TypefaceQueryOf(const LOGFONT& font) {
    std::string family(font.lfFaceName, std::find(std::begin(font.lfFaceName), std::end(font.lfFaceName), '\0'));
    // A name from the name lists is right-justified with blanks.
    family.erase(0, std::min(family.find_first_not_of(' '), family.size()));
    return {std::move(family), font.lfWeight, font.lfItalic != 0};
}

TypefaceFinder::TypefaceFinder() : m_config(FcInitLoadConfigAndFonts()) {}

TypefaceFinder::~TypefaceFinder() = default;

void TypefaceFinder::DestroyConfig::operator()(_FcConfig* config) const noexcept {
    FcConfigDestroy(config);
}

std::optional<TypefaceFile> TypefaceFinder::Find(const TypefaceQuery& query) const {
    const PatternHandle pattern = m_config ? PatternOf(query) : nullptr;
    if (!pattern) return std::nullopt;
    FcConfigSubstitute(m_config.get(), pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcResult result = FcResultNoMatch;
    const PatternHandle match(FcFontMatch(m_config.get(), pattern.get(), &result));
    FcChar8* path = nullptr;
    TypefaceFile file;
    if (!match || FcPatternGetString(match.get(), FC_FILE, 0, &path) != FcResultMatch) return std::nullopt;
    if (FcPatternGetInteger(match.get(), FC_INDEX, 0, &file.index) != FcResultMatch) file.index = 0;
    file.path = reinterpret_cast<const char*>(path);
    return file;
}

}  // namespace zel::picture
