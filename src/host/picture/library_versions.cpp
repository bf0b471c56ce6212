#include "host/picture/library_versions.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H
#include <png.h>

namespace zel::picture {

namespace {

std::string Dotted(int major, int minor, int patch) {
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch);
}

std::string FreetypeVersion() {
    FT_Library library = nullptr;
    if (FT_Init_FreeType(&library) != 0) return "unusable";
    int major = 0, minor = 0, patch = 0;
    FT_Library_Version(library, &major, &minor, &patch);
    FT_Done_FreeType(library);
    return Dotted(major, minor, patch);
}

}  // namespace

std::vector<std::pair<std::string, std::string>> LibraryVersions() {
    const int fontconfig = FcGetVersion();  // 10000, 100 and 1 for each step of the three numbers
    return {{"libpng", png_get_libpng_ver(nullptr)},
            {"FreeType", FreetypeVersion()},
            {"Fontconfig", Dotted(fontconfig / 10000, fontconfig / 100 % 100, fontconfig % 100)}};
}

}  // namespace zel::picture
