#include "host/fontkit/font_art.h"

#include <algorithm>
#include <bitset>
#include <cstring>
#include <functional>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "base/utf8.h"
#include "host/glyph_bitmaps.h"
#include "module/contract/zel_font.h"
#include "module/font/format/measure_run_codes.h"

namespace zel::fontkit {

namespace {

constexpr unsigned kBlankCode = 32;
/// Pixels of all run-coded glyphs; as many as the largest page has.
constexpr std::int64_t kMostPixels = std::int64_t{16} << 20;
/// Bytes of all stored glyphs, likewise.
constexpr std::uint64_t kStoredBytes = std::uint64_t{64} << 20;
/// Pixels of all layers; a font of letters has two layers a glyph.
constexpr std::int64_t kMostLayerPixels = std::int64_t{32} << 20;
/// Entries of FontArt::colours, each in two bytes of a glyph.
constexpr std::size_t kMostColours = 65536;
/// A line is at most this high, in pixels: as high as the largest distances in a font's records.
constexpr int kHighestLine = 2048;

/// The bytes of a pixel in all sets, as the key of a table.
struct HashColours {
    std::size_t operator()(const SetColours& colours) const noexcept {
        return std::hash<std::string_view>()({reinterpret_cast<const char*>(colours.data()), sizeof colours});
    }
};
struct SameColours {
    bool operator()(const SetColours& a, const SetColours& b) const noexcept {
        return std::memcmp(a.data(), b.data(), sizeof a) == 0;
    }
};
static_assert(sizeof(SetColours) == kColourSets * 3 && sizeof(font::RunColour) == 3);

using Bitmap = std::vector<std::uint8_t>;

class ArtReader {
  public:
    ArtReader(CZelFont& fonts, const ColourSets& sets, ArtLayers layers)
        : m_font(fonts.m_Slots[0]), m_layers(layers), m_stored(kStoredBytes) {
        m_stored.SetFonts(&fonts);
        m_art.sets = sets;
        if (m_font.encoding_data != nullptr) m_codes = {m_font.encoding_data, m_font.font_header->encoding_size};
        for (std::size_t entry = 0; entry < kSetEntries; ++entry) {
            SetColours colours;
            for (std::size_t set = 0; set < colours.size(); ++set) colours[set] = sets[set][entry];
            m_art.colours.push_back(colours);
        }
        // The face and the edge before the others, which may have the same colours.
        for (const std::size_t entry : {std::size_t{kFaceEntry}, std::size_t{kEdgeEntry}})
            m_entries.try_emplace(m_art.colours[entry], static_cast<std::uint16_t>(entry));
        for (std::size_t entry = 0; entry < m_art.colours.size(); ++entry)
            m_entries.try_emplace(m_art.colours[entry], static_cast<std::uint16_t>(entry));
    }

    FontArt Read() {
        m_art.name = base::Utf8FromLatin1(m_font.font_header->Name());
        m_art.font_height = m_font.font_header->font_height;
        for (unsigned code = 0; code < kDirectoryEntries; ++code) ReadGlyph(code);
        SetLines();
        return std::move(m_art);
    }

  private:
    void ReadGlyph(unsigned code) {
        const tag_char_entry* const entry = m_font.Entry(code);
        const bool has_glyph = entry != nullptr && entry->HasGlyph();
        if (!has_glyph && code != kBlankCode) return;
        GlyphArt glyph;
        glyph.code = code;
        int width = 0;
        if (has_glyph) {
            const std::string reason =
                entry->IsStored() ? ReadStored(glyph, width) : ReadRunCoded(glyph, *entry, width);
            if (!reason.empty()) m_art.lost.push_back({code, reason});
            if (!reason.empty() && code != kBlankCode) return;
        }
        glyph.top = glyph.IsBlank() ? 0 : entry->Top();
        const int metric = entry != nullptr ? entry->Metric() : 0;
        glyph.advance = metric != 0 ? metric : width;
        // As wide as an import of a filled field sets a blank without a width.
        if (code == kBlankCode && glyph.advance == 0) glyph.advance = std::max(1, m_art.font_height / 4);
        m_art.glyphs.push_back(std::move(glyph));
    }

    /// @return why there is no such glyph; empty if there is.
    std::string ReadStored(GlyphArt& glyph, int& width) {
        tag_CharInf info{};
        info.font_copy = m_font.font_copy;
        info.colour_set = -1;
        const std::size_t failures = m_stored.Failures().size();
        const host::GlyphBitmap& bitmap = m_stored.Get(info, glyph.code);
        if (bitmap.truncated) return "its record in the font file is cut short";
        if (m_stored.Failures().size() != failures) return m_stored.Failures().back();
        width = std::max<int>(bitmap.rect.Width(), 0);
        if (std::string error = SizeError(bitmap.rect.Width(), bitmap.rect.Height()); !error.empty()) return error;
        const Bitmap bgra = bitmap.pixels;
        const int height = bgra.empty() ? 0 : bitmap.rect.Height();
        m_stored.Drop();
        std::vector<picture::Rgba> pixels;
        pixels.reserve(bgra.size() / 4);
        const std::size_t row_bytes = static_cast<std::size_t>(width) * 4;
        bool is_clear = true;
        for (int row = height - 1; row >= 0; --row) {
            const std::uint8_t* byte = bgra.data() + static_cast<std::size_t>(row) * row_bytes;
            for (int x = 0; x < width; ++x, byte += 4) {
                is_clear = is_clear && byte[3] == 0;
                pixels.push_back(byte[3] == 0 ? picture::Rgba() : picture::Rgba{byte[2], byte[1], byte[0], byte[3]});
            }
        }
        if (is_clear) return {};
        glyph.kind = ArtKind::kStored;
        glyph.width = width;
        glyph.height = height;
        glyph.pixels = std::move(pixels);
        if (m_layers == ArtLayers::kEach) {
            ArtLayer layer{0, {width, height, {}}};
            for (const picture::Rgba& pixel : glyph.pixels) layer.coverage.bytes.push_back(pixel.alpha);
            glyph.layers.push_back(std::move(layer));
        }
        return {};
    }

    static std::string SizeError(int width, int height) {
        if (width <= kLargestGlyph && height <= kLargestGlyph) return {};
        return std::to_string(width) + " x " + std::to_string(height) + " pixels are too many for a page";
    }

    std::string ReadRunCoded(GlyphArt& glyph, const tag_char_entry& entry, int& width) {
        const font::RunCodeReader codes(m_codes, entry.glyph_offset);
        const font::GlyphSize size = font::MeasureRunCodes(codes);
        width = size.width;
        if (size.width <= 0 || size.height <= 0) return {};
        if (std::string error = SizeError(size.width, size.height); !error.empty()) return error;
        const std::int64_t count = std::int64_t{size.width} * size.height;
        if (count > m_left) return "beyond the " + std::to_string(kMostPixels) + " pixels of all glyphs of a font";
        m_left -= count;
        std::array<Bitmap, kColourSets> drawn;
        for (std::size_t set = 0; set < drawn.size(); ++set) drawn[set] = Draw(codes, size, m_art.sets[set]);
        if (std::string error = TakePixels(drawn, glyph); !error.empty()) return error;
        if (glyph.levels.empty()) return {};
        glyph.kind = ArtKind::kRunCoded;
        glyph.width = size.width;
        glyph.height = size.height;
        if (m_layers == ArtLayers::kEach) ReadLayers(codes, size, glyph);
        return {};
    }

    /// Pixels of blue, green, red and alpha, top row first.
    static Bitmap Draw(const font::RunCodeReader& codes, font::GlyphSize size,
                       std::span<const font::RunColour> colours) {
        Bitmap pixels(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) * 4);
        font::DrawRunCodes(codes, {colours, {}},
                           {pixels.data(), std::ptrdiff_t{size.width} * 4, size.width, size.height, std::uint8_t{0}});
        return pixels;
    }

    /// Sets entries and levels; leaves both empty for a glyph without visible pixels.
    std::string TakePixels(const std::array<Bitmap, kColourSets>& drawn, GlyphArt& glyph) {
        const std::size_t count = drawn[0].size() / 4;
        std::vector<std::uint16_t> entries(count);
        std::vector<std::uint8_t> levels(count);
        SetColours last = m_art.colours[0];
        std::uint16_t last_entry = 0;
        bool is_clear = true;
        for (std::size_t pixel = 0; pixel < count; ++pixel) {
            levels[pixel] = drawn[0][pixel * 4 + 3];
            if (levels[pixel] == 0) continue;
            is_clear = false;
            SetColours colours;
            for (std::size_t set = 0; set < drawn.size(); ++set) {
                const std::uint8_t* const bgra = &drawn[set][pixel * 4];
                colours[set] = {bgra[2], bgra[1], bgra[0]};
            }
            if (!SameColours()(colours, last)) {
                const std::optional<std::uint16_t> entry = EntryOf(colours);
                if (!entry) return "the font has more than " + std::to_string(kMostColours) + " mixtures of colours";
                last = colours;
                last_entry = *entry;
            }
            entries[pixel] = last_entry;
        }
        if (is_clear) return {};
        glyph.entries = std::move(entries);
        glyph.levels = std::move(levels);
        return {};
    }

    std::optional<std::uint16_t> EntryOf(const SetColours& colours) {
        const auto found = m_entries.find(colours);
        if (found != m_entries.end()) return found->second;
        if (m_art.colours.size() == kMostColours) return std::nullopt;
        const auto entry = static_cast<std::uint16_t>(m_art.colours.size());
        m_entries.emplace(colours, entry);
        m_art.colours.push_back(colours);
        return entry;
    }

    /// The colour indexes of a glyph's codes. Those beyond a set are black, as is index 0 of the default sets.
    static std::bitset<kSetEntries> UsedColours(font::RunCodeReader codes) {
        std::bitset<kSetEntries> used;
        for (font::RunCode code = codes.Next(); !code.EndsGlyph(); code = codes.Next()) {
            const bool draws =
                code.Operation() == font::RunOperation::kColour || code.Operation() == font::RunOperation::kBlended;
            if (draws) used.set(code.ColourIndex() < kSetEntries ? code.ColourIndex() : 0);
        }
        return used;
    }

    /// Draws the glyph with one white colour after another: the part of each colour in a pixel.
    void ReadLayers(const font::RunCodeReader& codes, font::GlyphSize size, GlyphArt& glyph) {
        std::bitset<kSetEntries> used = UsedColours(codes);
        m_layers_left -= static_cast<std::int64_t>(glyph.levels.size() * used.count());
        if (m_layers_left < 0) {
            m_art.lost.push_back({glyph.code, "too many pixels to outline its colours apart from one another"});
            used.reset();
        }
        std::vector<unsigned> sum(glyph.levels.size());
        std::array<font::RunColour, kSetEntries> colours{};
        for (std::size_t index = 0; index < kSetEntries; ++index) {
            if (!used[index]) continue;
            colours[index] = {255, 255, 255};
            const Bitmap drawn = Draw(codes, size, colours);
            colours[index] = {};
            ArtLayer layer{static_cast<unsigned>(index), {size.width, size.height, {}}};
            layer.coverage.bytes.reserve(sum.size());
            bool is_clear = true;
            for (std::size_t pixel = 0; pixel < sum.size(); ++pixel) {
                const unsigned share = (drawn[pixel * 4] * unsigned{glyph.levels[pixel]} + 127) / 255;
                is_clear = is_clear && share == 0;
                sum[pixel] = std::min<unsigned>(sum[pixel] + share, glyph.levels[pixel]);
                layer.coverage.bytes.push_back(static_cast<std::uint8_t>(sum[pixel]));
            }
            if (!is_clear) glyph.layers.insert(glyph.layers.begin(), std::move(layer));
        }
        // The shares are rounded; the bottom layer is the whole glyph.
        if (glyph.layers.empty()) glyph.layers.push_back({0, {size.width, size.height, {}}});
        glyph.layers.front().coverage.bytes = glyph.levels;
    }

    void SetLines() {
        int below = 0;
        for (const GlyphArt& glyph : m_art.glyphs) {
            if (glyph.IsBlank()) continue;
            m_art.base = std::max(m_art.base, glyph.top);
            below = std::max(below, glyph.height - glyph.top);
        }
        m_art.line_height = m_art.font_height > 0 ? m_art.font_height : m_art.base + below;
        m_art.line_height = std::clamp(m_art.line_height, 1, kHighestLine);
    }

    const tag_font_memory& m_font;
    const ArtLayers m_layers;
    host::GlyphBitmaps m_stored;
    std::span<const std::uint8_t> m_codes;
    std::int64_t m_left = kMostPixels, m_layers_left = kMostLayerPixels;
    std::unordered_map<SetColours, std::uint16_t, HashColours, SameColours> m_entries;
    FontArt m_art;
};

}  // namespace

picture::PixelBox GlyphArt::VisibleBox() const noexcept {
    picture::PixelBox box{width, height, 0, 0};
    const std::size_t count = std::max(levels.size(), pixels.size());
    for (std::size_t pixel = 0; pixel < count; ++pixel) {
        if ((kind == ArtKind::kStored ? pixels[pixel].alpha : levels[pixel]) == 0) continue;
        const int x = static_cast<int>(pixel) % width, y = static_cast<int>(pixel) / width;
        box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), std::max(box.bottom, y + 1)};
    }
    return box;
}

FontArt ReadFontArt(CZelFont& fonts, const ColourSets& sets, ArtLayers layers) {
    return ArtReader(fonts, sets, layers).Read();
}

}  // namespace zel::fontkit
