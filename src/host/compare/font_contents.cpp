#include "host/compare/font_contents.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "module/font/format/draw_run_codes.h"
#include "module/font/format/measure_run_codes.h"
#include "module/font/format/run_codes.h"
#include "module/font/format/stored_glyph.h"

namespace zel::compare {

namespace {

/// The codes of a glyph as far as drawing and measuring follow them, or a little further.
std::span<const std::uint8_t> GlyphCodes(std::span<const std::uint8_t> encoding, std::uint32_t offset) {
    font::RunCodeReader codes(encoding, offset);
    const auto all = codes.Rest();
    int lines = 0;
    while (codes.Left() != 0 && lines < font::kMaxGlyphLines) {
        const font::RunCode code = codes.Next();
        if (code.EndsGlyph()) break;
        if (code.Operation() == font::RunOperation::kEndOfLine) ++lines;
    }
    return all.first(all.size() / 4 * 4 - codes.Left() * 4);
}

/// A colour for each index; none is black, which indexes without a colour have.
std::array<font::RunColour, font::RunColours::kMaxCount> Colours() {
    std::array<font::RunColour, font::RunColours::kMaxCount> colours{};
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const auto n = static_cast<unsigned>(i);
        colours[i] = {static_cast<std::uint8_t>(255 - n * 4), static_cast<std::uint8_t>(255 - n % 8 * 24),
                      static_cast<std::uint8_t>(255 - n / 8 * 48)};
    }
    return colours;
}

picture::Picture DrawCodes(const FontGlyph& glyph) {
    picture::Picture drawn = picture::ClearPicture(glyph.width, glyph.height);
    if (drawn.rgba.empty()) return drawn;
    const auto colours = Colours();
    const std::ptrdiff_t stride = std::ptrdiff_t{glyph.width} * 4;
    font::DrawRunCodes(font::RunCodeReader(glyph.stored, 0), {colours, {1, 2, 3}},
                       {drawn.rgba.data(), stride, glyph.width, glyph.height, std::uint8_t{0}});
    for (std::size_t i = 0; i + 3 < drawn.rgba.size(); i += 4) std::swap(drawn.rgba[i], drawn.rgba[i + 2]);
    return drawn;
}

picture::Picture DrawStored(const FontGlyph& glyph) {
    // A height comes from the file; rows that it doesn't have are clear, and need no memory.
    const std::size_t row = picture::PixelBytes(glyph.width, 1);
    const std::size_t rows = row == 0 ? 0 : (glyph.stored.size() + row - 1) / row;
    const int height = static_cast<int>(std::min(rows, static_cast<std::size_t>(glyph.height)));
    picture::Picture drawn = picture::ClearPicture(glyph.width, height);
    const std::size_t count = std::min(glyph.stored.size() / 4 * 4, drawn.rgba.size());
    if (count == 0) return drawn;
    std::memcpy(drawn.rgba.data(), glyph.stored.data(), count);
    font::StraightenPixels(std::span(drawn.rgba).first(count));
    for (std::size_t i = 0; i + 3 < count; i += 4) std::swap(drawn.rgba[i], drawn.rgba[i + 2]);
    return drawn;
}

}  // namespace

FontContents::FontContents(std::span<const std::uint8_t> bytes)
    : m_bytes(bytes), m_outcome(font::LoadFont(bytes, m_loaded)) {}

FontGlyph FontContents::Glyph(int code) const {
    const tag_char_entry& entry = Slot().char_directory[code];
    FontGlyph glyph;
    if (!entry.HasGlyph()) return glyph;
    glyph.top = entry.Top();
    glyph.metric = entry.Metric();
    if (entry.IsRunCoded()) {
        glyph.kind = "run-coded";
        if (Slot().encoding_data == nullptr) return glyph;
        const std::span encoding(Slot().encoding_data, Slot().font_header->encoding_size);
        const font::GlyphSize size = font::MeasureRunCodes(font::RunCodeReader(encoding, entry.glyph_offset));
        glyph.width = size.width;
        glyph.height = size.height;
        glyph.stored = GlyphCodes(encoding, entry.glyph_offset);
        return glyph;
    }
    glyph.kind = "stored";
    const auto record = m_bytes.subspan(std::min<std::size_t>(entry.glyph_offset, m_bytes.size()));
    const std::size_t head_size = std::min(record.size(), font::kStoredGlyphHeadSize);
    const font::StoredGlyphHead head = font::ConvertStoredGlyphHead(record.first(head_size));
    glyph.flag = head.Flag();
    glyph.width = std::max<int>(head.width, 0);
    glyph.height = std::max<int>(head.height, 0);
    // Pixels beyond the record's end aren't drawn, nor those that the file doesn't have.
    const std::size_t end = std::clamp<std::size_t>(head.length, head_size, record.size());
    const std::size_t pixels = picture::PixelBytes(glyph.width, glyph.height);
    glyph.stored = record.subspan(head_size, std::min(end - head_size, pixels));
    return glyph;
}

picture::Picture FontContents::Draw(const FontGlyph& glyph) const {
    if (!glyph.IsThere()) return picture::ClearPicture(0, 0);
    return glyph.kind[0] == 's' ? DrawStored(glyph) : DrawCodes(glyph);
}

}  // namespace zel::compare
