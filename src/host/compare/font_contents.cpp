#include "host/compare/font_contents.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <sys/stat.h>

#include "base/regular_file.h"
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
    font::DrawRunCodes(font::RunCodeReader(glyph.codes, 0), {colours, {1, 2, 3}},
                       {drawn.rgba.data(), stride, glyph.width, glyph.height, std::uint8_t{0}});
    for (std::size_t i = 0; i + 3 < drawn.rgba.size(); i += 4) std::swap(drawn.rgba[i], drawn.rgba[i + 2]);
    return drawn;
}

}  // namespace

FontFileBytes::FontFileBytes(const std::string& path) {
    try {
        m_file = base::OpenRegularFile(path);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
    struct stat status {};
    if (::fstat(m_file.Get(), &status) != 0) throw std::runtime_error(path + ": " + std::strerror(errno));
    m_size = static_cast<std::uint64_t>(status.st_size);
}

std::size_t FontFileBytes::Read(std::uint64_t offset, std::span<std::uint8_t> out) {
    return base::ReadFullyAt(m_file.Get(), out.data(), out.size(), offset);
}

FontContents::FontContents(message::FileBytes& file) : m_file(file) {
    message::ByteSource source(file);
    m_outcome = font::LoadFont(source, m_loaded);
}

FontGlyph FontContents::Glyph(int code) {
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
        glyph.codes = GlyphCodes(encoding, entry.glyph_offset);
        return glyph;
    }
    glyph.kind = "stored";
    std::array<std::uint8_t, font::kStoredGlyphHeadSize> bytes{};
    const std::uint64_t left = m_file.Size() - std::min<std::uint64_t>(entry.glyph_offset, m_file.Size());
    const std::size_t head_size = m_file.Read(entry.glyph_offset, bytes);
    const font::StoredGlyphHead head = font::ConvertStoredGlyphHead(std::span(bytes).first(head_size));
    glyph.flag = head.Flag();
    glyph.width = std::max<int>(head.width, 0);
    glyph.height = std::max<int>(head.height, 0);
    // Pixels beyond the record's end aren't drawn, nor those that the file doesn't have.
    const std::uint64_t end = std::min(left, std::max<std::uint64_t>(head.length, head_size));
    glyph.offset = entry.glyph_offset + head_size;
    glyph.size = std::min(static_cast<std::size_t>(end - std::min<std::uint64_t>(end, head_size)),
                          picture::PixelBytes(glyph.width, glyph.height));
    return glyph;
}

picture::Picture FontContents::Draw(const FontGlyph& glyph) {
    if (!glyph.IsThere() || !glyph.IsDrawn()) return picture::ClearPicture(0, 0);
    if (!glyph.IsStored()) return DrawCodes(glyph);
    picture::Picture drawn = picture::ClearPicture(glyph.width, glyph.height);
    const std::size_t count = std::min(glyph.size, drawn.rgba.size()) / 4 * 4;
    const std::span pixels = std::span(drawn.rgba).first(count);
    const std::size_t read = m_file.Read(glyph.offset, pixels);
    std::fill(pixels.begin() + static_cast<std::ptrdiff_t>(read), pixels.end(), std::uint8_t{0});
    font::StraightenPixels(pixels);
    for (std::size_t i = 0; i + 3 < count; i += 4) std::swap(drawn.rgba[i], drawn.rgba[i + 2]);
    return drawn;
}

bool FontContents::HasSameBytes(const FontGlyph& glyph, FontContents& other, const FontGlyph& other_glyph) {
    if (!glyph.IsStored()) return std::ranges::equal(glyph.codes, other_glyph.codes);
    if (glyph.size != other_glyph.size) return false;
    std::array<std::uint8_t, 8192> one, another;
    for (std::size_t done = 0; done < glyph.size; done += one.size()) {
        const std::size_t size = std::min(one.size(), glyph.size - done);
        const std::size_t read = m_file.Read(glyph.offset + done, std::span(one).first(size));
        const std::size_t other_read = other.m_file.Read(other_glyph.offset + done, std::span(another).first(size));
        if (read != other_read || std::memcmp(one.data(), another.data(), read) != 0) return false;
        if (read < size) break;
    }
    return true;
}

}  // namespace zel::compare
