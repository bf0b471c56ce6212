#include "host/live/live_font.h"

#include <algorithm>
#include <cstring>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>

#include "host/live/glyph_stream.h"
#include "module/contract/records/char_entry.h"
#include "module/font/format/draw_run_codes.h"
#include "module/font/format/font_loader.h"
#include "module/font/format/measure_run_codes.h"
#include "module/font/format/stored_glyph.h"

namespace zel::live {

namespace {

// As in host/glyph_bitmaps.cpp: bytes of the largest glyph, and of the largest one that may be more than its font file.
constexpr std::uint64_t kLargestGlyph = std::uint64_t{16} << 20;
constexpr std::uint64_t kLargestUnchecked = std::uint64_t{4} << 20;

/// A glyph as the module builds it: blue, green, red and alpha of each pixel, top row first.
using Pixels = std::vector<std::uint8_t>;

std::uint32_t RgbaAt(const Pixels& bgra, std::size_t pixel) noexcept {
    const std::uint8_t* const p = &bgra[pixel * 4];
    return std::uint32_t{p[2]} << 24 | std::uint32_t{p[1]} << 16 | std::uint32_t{p[0]} << 8 | p[3];
}

using SetColours = std::array<font::RunColour, kSetEntries>;

SetColours ColoursOf(const tag_palete& palette, std::size_t set) {
    SetColours colours;
    for (std::size_t n = 0; n < colours.size(); ++n) {
        const COLORREF colour = PackColour(palette.colour_sets[set][n]);
        colours[n] = {static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 8),
                      static_cast<std::uint8_t>(colour >> 16)};
    }
    return colours;
}

/// Colours that show three bits of their index. A channel of 0 or 255 is the same at every level.
SetColours BitColours(unsigned first_bit) {
    SetColours colours;
    for (unsigned index = 0; index < colours.size(); ++index) {
        // One more bit, which all indexes of a colour set have.
        const unsigned bits = (index | 1U << 5) >> first_bit;
        const auto channel = [&](unsigned bit) { return static_cast<std::uint8_t>((bits >> bit & 1) != 0 ? 255 : 0); };
        colours[index] = {channel(0), channel(1), channel(2)};
    }
    return colours;
}

/// The index that a pixel shows in both BitColours.
unsigned IndexOf(std::uint32_t low, std::uint32_t high) noexcept {
    const auto bits = [](std::uint32_t rgba) {
        return (rgba >> 31 & 1) | (rgba >> 23 & 1) << 1 | (rgba >> 15 & 1) << 2;
    };
    const unsigned index = bits(low) | bits(high) << 3;
    return index < 1U << 5 ? PixelClass::kBlack : index & 0x1F;
}

struct CodeCount {
    std::uint64_t codes = 0;
    /// All pixels of the glyph have one colour of the set each: colours are mixed by blended runs, and a code that
    /// stays leaves a pixel that isn't straight.
    bool is_plain = true;
};

CodeCount CountCodes(font::RunCodeReader codes) noexcept {
    CodeCount count;
    while (codes.Left() != 0) {
        const font::RunCode code = codes.Next();
        ++count.codes;
        if (code.EndsGlyph()) break;
        const bool is_plain = code.IsColourRun() || code.Operation() == font::RunOperation::kBackground ||
                              code.Operation() == font::RunOperation::kEndOfLine;
        count.is_plain = count.is_plain && is_plain;
    }
    return count;
}

/// The pixels of a stored glyph; none if the file has only a part of its record.
std::optional<Pixels> StoredPixels(std::span<const std::uint8_t> record, const font::StoredGlyphHead& head,
                                   std::size_t bytes) {
    constexpr std::size_t kLengthBytes = 4;
    const std::size_t length = std::max<std::size_t>(head.length, kLengthBytes);
    if (record.size() < length) return std::nullopt;
    Pixels pixels(bytes);
    record = record.first(length);
    if (record.size() <= font::kStoredGlyphHeadSize) return pixels;
    const std::size_t row = static_cast<std::size_t>(head.width) * 4;
    const std::size_t present = std::min(record.size() - font::kStoredGlyphHeadSize, bytes);
    std::memcpy(pixels.data(), record.data() + font::kStoredGlyphHeadSize, present / row * row);
    font::StraightenPixels(pixels);
    return pixels;
}

}  // namespace

class LiveFontReader::Impl {
  public:
    Impl(std::span<const std::uint8_t> file, int number, const tag_palete& palette, GlyphBudget& budget)
        : m_file(file), m_budget(budget) {
        std::optional<fill::FontMetrics> metrics = fill::MeasureFont(file, number);
        if (!metrics || LoadFont(file, m_loaded) != font::FontOutcome::kRead)
            throw std::runtime_error("font " + std::to_string(number) + " is damaged");
        m_font.metrics = std::move(*metrics);
        for (std::size_t set = 0; set < m_colours.size(); ++set) m_colours[set] = ColoursOf(palette, set);
    }

    void Add(unsigned code) {
        const tag_char_entry* const entry = m_loaded.slot.Entry(code);
        if (entry == nullptr || !entry->HasGlyph() || !m_added.insert(code).second) return;
        if (entry->IsStored()) {
            AddStored(code, entry->glyph_offset);
        } else if (m_loaded.slot.encoding_data != nullptr) {
            const std::span codes(m_loaded.slot.encoding_data, m_loaded.slot.font_header->encoding_size);
            AddRunCoded(code, font::RunCodeReader(codes, entry->glyph_offset));
        }
    }

    LiveFont m_font;

  private:
    /// Whether the host draws a glyph of this size.
    bool Take(int width, int height) {
        if (width <= 0 || height <= 0) return false;
        const std::uint64_t pixels = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
        if (pixels * 4 > kLargestGlyph) return false;
        m_budget.TakePixels(pixels);
        return true;
    }
    void AddStored(unsigned code, std::uint32_t offset);
    void AddRunCoded(unsigned code, font::RunCodeReader codes);
    unsigned ClassOf(PixelClass pixel);
    unsigned ClassOfMixed(const LiveFont::MixedColours& colours);

    const std::span<const std::uint8_t> m_file;
    GlyphBudget& m_budget;
    font::LoadedFont m_loaded;
    std::array<SetColours, kColourSets> m_colours;
    std::set<unsigned> m_added;
    /// By index and level.
    std::map<std::pair<unsigned, unsigned>, unsigned> m_classes;
    std::map<LiveFont::MixedColours, unsigned> m_mixed;
};

void LiveFontReader::Impl::AddStored(unsigned code, std::uint32_t offset) {
    const std::span<const std::uint8_t> record = m_file.subspan(std::min<std::size_t>(offset, m_file.size()));
    const font::StoredGlyphHead head = font::ConvertStoredGlyphHead(record);
    // An import with such a character fails.
    if (record.size() < font::kStoredGlyphHeadSize) {
        m_font.metrics.glyphs[code].has_glyph = false;
        return;
    }
    if (!Take(head.width, head.height)) return;
    const std::size_t bytes = static_cast<std::size_t>(head.width) * static_cast<std::size_t>(head.height) * 4;
    if (bytes > kLargestUnchecked && bytes > m_file.size()) return;
    std::optional<Pixels> pixels = StoredPixels(record, head, bytes);
    if (!pixels) return;
    for (std::size_t at = 0; at < pixels->size(); at += 4) std::swap((*pixels)[at], (*pixels)[at + 2]);
    m_font.stored[code] = {head.width, head.height, PixelStream(*pixels)};
}

void LiveFontReader::Impl::AddRunCoded(unsigned code, font::RunCodeReader codes) {
    const CodeCount code_count = CountCodes(codes);
    m_budget.TakeCodes(code_count.codes);
    const font::GlyphSize size = font::MeasureRunCodes(codes);
    if (!Take(size.width, size.height)) return;
    const std::size_t count = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    const auto draw = [&](const SetColours& colours) {
        Pixels pixels(count * 4);
        const font::PixelRows rows{pixels.data(), std::ptrdiff_t{size.width} * 4, size.width, size.height,
                                   std::uint8_t{0}};
        font::DrawRunCodes(codes, {colours, {}}, rows);
        return pixels;
    };
    static const SetColours kLowBits = BitColours(0), kHighBits = BitColours(3);
    const Pixels low = draw(kLowBits), high = draw(kHighBits);
    std::vector<Pixels> drawn;
    if (!code_count.is_plain) {
        for (const SetColours& colours : m_colours) drawn.push_back(draw(colours));
    }
    std::vector<std::uint32_t> classes(count);
    for (std::size_t n = 0; n < count; ++n) {
        if (drawn.empty()) {
            const std::uint32_t shown = RgbaAt(low, n);
            if (const unsigned level = shown & 0xFF; level != 0)
                classes[n] = ClassOf({IndexOf(shown, RgbaAt(high, n)), level});
            continue;
        }
        LiveFont::MixedColours colours{};
        for (std::size_t set = 0; set < drawn.size(); ++set) colours[set] = RgbaAt(drawn[set], n);
        const bool is_clear = std::ranges::all_of(colours, [](std::uint32_t rgba) { return (rgba & 0xFF) == 0; });
        if (!is_clear) classes[n] = ClassOfMixed(colours);
    }
    m_font.run_coded[code] = {size.width, size.height, ClassStream(classes)};
}

unsigned LiveFontReader::Impl::ClassOf(PixelClass pixel) {
    const auto number = static_cast<unsigned>(m_font.classes.size() + 1);
    const auto [found, is_new] = m_classes.try_emplace({pixel.index, pixel.level}, number);
    if (is_new) m_font.classes.push_back(pixel);
    return found->second;
}

unsigned LiveFontReader::Impl::ClassOfMixed(const LiveFont::MixedColours& colours) {
    const auto number = static_cast<unsigned>(m_font.mixed.size());
    const auto [found, is_new] = m_mixed.try_emplace(colours, number);
    if (is_new) m_font.mixed.push_back(colours);
    return ClassOf({PixelClass::kMixed, found->second});
}

void GlyphBudget::TakePixels(std::uint64_t count) {
    if (count > m_pixels) throw std::runtime_error("its glyphs have more pixels than a host draws for a message");
    m_pixels -= count;
}

void GlyphBudget::TakeCodes(std::uint64_t count) {
    if (count > m_codes) throw std::runtime_error("its glyphs have more run codes than a host draws for a message");
    m_codes -= count;
}

LiveFontReader::LiveFontReader(std::span<const std::uint8_t> file, int number, const tag_palete& palette,
                               GlyphBudget& budget)
    : m_impl(std::make_unique<Impl>(file, number, palette, budget)) {}
LiveFontReader::~LiveFontReader() = default;
LiveFontReader::LiveFontReader(LiveFontReader&&) noexcept = default;

const fill::FontMetrics& LiveFontReader::Metrics() const noexcept {
    return m_impl->m_font.metrics;
}

void LiveFontReader::Add(unsigned code) {
    m_impl->Add(code);
}

void LiveFontReader::AddAll() {
    m_impl->m_font.is_for_fields = true;
    for (unsigned code = 0; code < kDirectoryEntries; ++code) m_impl->Add(code);
}

LiveFont LiveFontReader::Take() {
    return std::move(m_impl->m_font);
}

}  // namespace zel::live
