#include "host/fontkit/bmfont.h"

#include <initializer_list>
#include <string_view>
#include <utility>

#include "base/utf8.h"

namespace zel::fontkit {

namespace {

/// The attributes of one line or element.
class Attributes {
  public:
    Attributes& Number(std::string_view name, std::int64_t value) {
        m_list.emplace_back(name, std::to_string(value));
        return *this;
    }
    /// Several numbers, with commas.
    Attributes& Numbers(std::string_view name, std::string_view numbers) {
        m_list.emplace_back(name, numbers);
        return *this;
    }
    Attributes& Text(std::string_view name, std::string_view text) {
        m_list.emplace_back(name, text);
        m_texts.push_back(name);
        return *this;
    }

    /// name=value; texts have quotes. The form has no way to write a quote in a text.
    std::string Line(std::string_view tag) const {
        std::string line(tag);
        for (const auto& [name, value] : m_list) {
            line.append(" ").append(name).append("=").append(IsText(name) ? '"' + value + '"' : value);
        }
        return line + "\n";
    }

    /// @param end  of the element: "/>" or ">".
    std::string Element(std::string_view tag, std::string_view end = "/>") const {
        std::string element = "<" + std::string(tag);
        for (const auto& [name, value] : m_list) {
            element.append(" ").append(name).append("=\"").append(Escaped(value)).append("\"");
        }
        return element.append(end).append("\n");
    }

  private:
    bool IsText(std::string_view name) const {
        for (const std::string_view text : m_texts) {
            if (text == name) return true;
        }
        return false;
    }
    static std::string Escaped(std::string_view text) {
        std::string escaped;
        for (const char c : text) {
            if (c == '&')
                escaped += "&amp;";
            else if (c == '<')
                escaped += "&lt;";
            else if (c == '"')
                escaped += "&quot;";
            else
                escaped += c;
        }
        return escaped;
    }

    std::vector<std::pair<std::string_view, std::string>> m_list;
    std::vector<std::string_view> m_texts;
};

/// A name without control characters and without quotes.
std::string FaceName(std::string_view name) {
    std::string face;
    while (!name.empty()) {
        const base::Utf8Character first = base::FirstCharacter(name);
        const std::string_view character = name.substr(0, first.size);
        if (base::IsControl(first.code))
            face += ' ';
        else if (character == "\"")
            face += '\'';
        else
            face += character;
        name.remove_prefix(first.size);
    }
    return face;
}

Attributes Info(const FontArt& art) {
    Attributes info;
    info.Text("face", FaceName(art.name)).Number("size", art.line_height).Number("bold", 0).Number("italic", 0);
    info.Text("charset", "").Number("unicode", 1).Number("stretchH", 100).Number("smooth", 1).Number("aa", 1);
    return info.Numbers("padding", "0,0,0,0").Numbers("spacing", "1,1").Number("outline", 0);
}

Attributes Common(const FontArt& art, const Atlas& atlas) {
    Attributes common;
    common.Number("lineHeight", art.line_height).Number("base", art.base).Number("scaleW", atlas.page_width);
    common.Number("scaleH", atlas.page_height).Number("pages", atlas.page_count).Number("packed", 0);
    return common.Number("alphaChnl", 0).Number("redChnl", 0).Number("greenChnl", 0).Number("blueChnl", 0);
}

Attributes Page(const KitNames& names, unsigned set, int page) {
    return Attributes().Number("id", page).Text("file", names.Page(set, page));
}

Attributes Char(const FontArt& art, const GlyphArt& glyph, const std::optional<AtlasPlace>& place) {
    const AtlasPlace at = place.value_or(AtlasPlace{});
    Attributes attributes;
    attributes.Number("id", glyph.code).Number("x", at.x).Number("y", at.y).Number("width", glyph.width);
    attributes.Number("height", glyph.height).Number("xoffset", 0);
    attributes.Number("yoffset", glyph.IsBlank() ? 0 : art.base - glyph.top).Number("xadvance", glyph.advance);
    return attributes.Number("page", at.page).Number("chnl", 15);
}

Attributes Count(std::size_t count) {
    return Attributes().Number("count", static_cast<std::int64_t>(count));
}

}  // namespace

std::string BmFontText(const FontArt& art, const Atlas& atlas, const KitNames& names, unsigned set) {
    std::string text = Info(art).Line("info") + Common(art, atlas).Line("common");
    for (int page = 0; page < atlas.page_count; ++page) text += Page(names, set, page).Line("page");
    text += Count(art.glyphs.size()).Line("chars");
    for (std::size_t index = 0; index < art.glyphs.size(); ++index)
        text += Char(art, art.glyphs[index], atlas.places[index]).Line("char");
    return text + Count(0).Line("kernings");
}

std::string BmFontXml(const FontArt& art, const Atlas& atlas, const KitNames& names, unsigned set) {
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<font>\n";
    text += Info(art).Element("info") + Common(art, atlas).Element("common") + "<pages>\n";
    for (int page = 0; page < atlas.page_count; ++page) text += Page(names, set, page).Element("page");
    text += "</pages>\n" + Count(art.glyphs.size()).Element("chars", ">");
    for (std::size_t index = 0; index < art.glyphs.size(); ++index)
        text += Char(art, art.glyphs[index], atlas.places[index]).Element("char");
    return text + "</chars>\n" + Count(0).Element("kernings") + "</font>\n";
}

}  // namespace zel::fontkit
