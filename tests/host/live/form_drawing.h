#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "base/base64.h"
#include "host/picture/composite.h"
#include "host/picture/picture.h"

namespace zel::test {

/// Reads the numbers and pixels of a glyph's stream.
class StreamReader {
  public:
    explicit StreamReader(std::string bytes) : m_bytes(std::move(bytes)) {}
    bool AtEnd() const { return m_at >= m_bytes.size(); }
    std::uint32_t Number() {
        std::uint32_t number = 0;
        for (unsigned shift = 0;; shift += 7) {
            const auto byte = static_cast<std::uint8_t>(m_bytes.at(m_at++));
            number |= (byte & 0x7FU) << shift;
            if (byte < 0x80) return number;
        }
    }
    picture::Rgba Pixel() {
        const auto next = [this] { return static_cast<std::uint8_t>(m_bytes.at(m_at++)); };
        return {next(), next(), next(), next()};
    }

  private:
    std::string m_bytes;
    std::size_t m_at = 0;
};

inline std::string FromBase64(const std::string& text) {
    std::string bytes;
    unsigned bits = 0, value = 0;
    for (const char c : text) {
        const auto digit = std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/").find(c);
        if (digit == std::string_view::npos) break;
        value = value << 6 | static_cast<unsigned>(digit);
        if ((bits += 6) >= 8) bytes += static_cast<char>(value >> (bits -= 8) & 0xFF);
    }
    return bytes;
}

/// Draws a form as its scripts do, but for the blanks of empty fields and for texts. From the description of the form
/// alone, in the plainest way.
class FormDrawing {
  public:
    explicit FormDrawing(const nlohmann::ordered_json& form) : m_form(form) {}

    picture::Picture Draw() const {
        picture::Picture picture = picture::ClearPicture(m_form["width"], m_form["height"]);
        for (const auto& row : m_form["rows"]) DrawRow(picture.View(), row);
        return picture;
    }

  private:
    using Json = nlohmann::ordered_json;

    void DrawRow(picture::PixelView view, const Json& row) const {
        if (row["empty"]) return;
        const Json& cells = row["cells"];
        const Json zero = {0, 0, 0, 0, 0, 0};
        int index = row["first"];
        for (std::size_t step = 0; step < cells.size() && index != 63; ++step) {
            const Json& cell =
                static_cast<std::size_t>(index) < cells.size() ? cells[static_cast<std::size_t>(index)] : zero;
            index = cell[5];
            if (cell[3] >= 16) continue;
            const int font_index = m_form["slots"][cell[3].get<std::size_t>()];
            if (font_index < 0) return;
            const Json& font = m_form["fonts"][static_cast<std::size_t>(font_index)];
            const unsigned code = cell[4].get<unsigned>() & 255;
            const int top = code < 192 ? font["tops"][code].get<int>() : 0;
            const int x = cell[0].get<int>() + 7;
            const int y =
                row["y"].get<int>() + cell[1].get<int>() - top - (row["top"].get<int>() - font["topOffset"].get<int>());
            const picture::Picture glyph = Glyph(font, code, cell[2]);
            picture::BlendPixels(view, x, y, glyph.View());
        }
    }

    picture::Picture Glyph(const Json& font, unsigned code, std::size_t set) const {
        const std::string key = std::to_string(code);
        const bool is_stored = font["pictures"].contains(key);
        if (!is_stored && !font["glyphs"].contains(key)) return {};
        const Json& glyph = font[is_stored ? "pictures" : "glyphs"][key];
        picture::Picture picture = picture::ClearPicture(glyph[0], glyph[1]);
        StreamReader stream(FromBase64(glyph[2]));
        std::size_t at = 0;
        const auto put = [&](picture::Rgba pixel) {
            picture.View().Row(static_cast<int>(at) / picture.width)[at % static_cast<std::size_t>(picture.width)] =
                pixel;
            ++at;
        };
        while (!stream.AtEnd()) {
            const std::uint32_t number = stream.Number();
            if (!is_stored) {
                const picture::Rgba colour = Colour(font, stream.Number(), set);
                for (std::uint32_t n = 0; n < number; ++n) put(colour);
            } else if (number % 2 != 0) {
                for (std::uint32_t n = 0; n < number / 2; ++n) put(stream.Pixel());
            } else {
                const picture::Rgba colour = stream.Pixel();
                for (std::uint32_t n = 0; n < number / 2; ++n) put(colour);
            }
        }
        return picture;
    }

    picture::Rgba Colour(const Json& font, std::size_t pixel_class, std::size_t set) const {
        if (pixel_class == 0) return {};
        const unsigned index = font["classes"][2 * pixel_class - 2], level = font["classes"][2 * pixel_class - 1];
        const auto channel = [](std::uint32_t value, unsigned shift) {
            return static_cast<std::uint8_t>(value >> shift);
        };
        if (index == 33) {
            const std::uint32_t rgba = font["mixed"][level][set];
            return {channel(rgba, 24), channel(rgba, 16), channel(rgba, 8), channel(rgba, 0)};
        }
        const std::uint32_t rgb = index < 32 ? m_form["colourSets"][set][index].get<std::uint32_t>() : 0;
        const auto straight = [&](std::uint8_t value) {
            const unsigned limited = std::min<unsigned>(value, level);
            return static_cast<std::uint8_t>((510 * limited + level) / (2 * level));
        };
        return {straight(channel(rgb, 16)), straight(channel(rgb, 8)), straight(channel(rgb, 0)),
                static_cast<std::uint8_t>(level)};
    }

    const Json& m_form;
};

}  // namespace zel::test
