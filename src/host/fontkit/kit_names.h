#pragma once

#include <string>
#include <string_view>

namespace zel::fontkit {

/// The names of a font kit's files, all relative to its directory.
/// @param stem  of the font: the digits of its file's name.
class KitNames {
  public:
    explicit KitNames(std::string stem) : m_stem(std::move(stem)) {}

    std::string Metrics() const { return m_stem + ".json"; }
    /// @param extension  "fnt" or "xml".
    std::string BmFont(unsigned set, const char* extension) const { return SetStem(set) + '.' + extension; }
    std::string Page(unsigned set, int page) const { return SetStem(set) + '_' + std::to_string(page) + ".png"; }
    /// @param content  "index", "index-high", "level" or "stored".
    std::string Plane(const char* content, int page) const {
        return m_stem + '_' + content + '_' + std::to_string(page) + ".png";
    }
    /// In a directory of its own: the code with three digits.
    std::string Glyph(unsigned code) const {
        const std::string digits = std::to_string(code);
        return m_stem + "_glyphs/" + std::string(3 - digits.size(), '0') + digits + ".png";
    }
    std::string TrueType() const { return m_stem + ".ttf"; }
    std::string PixelTrueType() const { return m_stem + "-pixels.ttf"; }
    const std::string& Stem() const noexcept { return m_stem; }

  private:
    std::string SetStem(unsigned set) const { return m_stem + "_set" + std::to_string(set); }

    std::string m_stem;
};

/// Whether a name ends like one of a kit's files.
inline bool IsKitFile(std::string_view name) {
    for (const std::string_view end : {".json", ".fnt", ".xml", ".png", ".ttf"}) {
        if (name.ends_with(end)) return true;
    }
    return false;
}

}  // namespace zel::fontkit
