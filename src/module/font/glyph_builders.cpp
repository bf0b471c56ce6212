#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>

#include "module/contract/zel_font.h"
#include "module/font/format/draw_run_codes.h"
#include "module/font/format/stored_glyph.h"
#include "module/font/glyph_file.h"
#include "platform/framework/cfile.h"
#include "platform/framework/exceptions.h"

using namespace zel;

namespace {

// The pixels of a bitmap; empty for one without pixels.
std::span<std::uint8_t> BitmapBytes(const DIBSECTION* dib) noexcept {
    if (dib == nullptr || dib->dsBm.bmBits == nullptr || dib->dsBmih.biWidth <= 0 || dib->dsBmih.biHeight <= 0)
        return {};
    const std::size_t width = static_cast<std::size_t>(dib->dsBmih.biWidth),
                      height = static_cast<std::size_t>(dib->dsBmih.biHeight);
    if (width > SIZE_MAX / 4 / height) return {};
    return {static_cast<std::uint8_t*>(dib->dsBm.bmBits), width * height * 4};
}

// The colours of a run-coded glyph: a colour set of the palette block or, without one, the default colours.
class GlyphColours {
  public:
    GlyphColours(const CZelFont& font, int palette_set) noexcept {
        if (palette_set >= 0 && palette_set < kColourSets) {
            const std::uint32_t* entries = font.m_Palette + 1 + palette_set * kSetEntries;
            for (std::size_t i = 0; i < kSetEntries; ++i) m_colours[i] = FromPacked(PackColour(entries[i]));
            m_count = kSetEntries;
        } else {
            m_colours[1] = FromPacked(font.m_FaceColor);
            m_colours[2] = FromPacked(font.m_EdgeColor);
            m_colours[3] = FromPacked(font.m_BackColor);
            m_count = 4;
        }
        m_background = FromPacked(font.m_BackColor);
    }

    font::RunColours Colours() const noexcept { return {{m_colours, m_count}, m_background}; }

  private:
    static font::RunColour FromPacked(COLORREF colour) noexcept {
        return {static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 8),
                static_cast<std::uint8_t>(colour >> 16)};
    }

    font::RunColour m_colours[kSetEntries] = {};
    std::size_t m_count = 0;
    font::RunColour m_background;
};

// Size of a stored glyph's head and pixels, whatever the length of its record.
std::uint64_t GlyphBytes(const font::StoredGlyphHead& head) noexcept {
    if (head.width <= 0 || head.height <= 0) return font::kStoredGlyphHeadSize;
    return font::kStoredGlyphHeadSize +
           static_cast<std::uint64_t>(head.width) * static_cast<std::uint64_t>(head.height) * 4;
}

// The record of a stored glyph, up to the end of its pixels. One read of a fixed size is enough for most; a larger
// record needs an allocation and a second read.
class StoredRecord {
  public:
    StoredRecord(CFile& file, const tag_font_memory& font, std::uint32_t offset);

    std::span<const std::uint8_t> Bytes() const noexcept { return m_bytes; }

  private:
    static constexpr std::size_t kLengthBytes = 4;

    std::array<std::uint8_t, 8192> m_first;
    std::unique_ptr<std::uint8_t[]> m_larger;
    std::span<const std::uint8_t> m_bytes;
};

StoredRecord::StoredRecord(CFile& file, const tag_font_memory& font, std::uint32_t offset) {
    file.Seek(static_cast<LONGLONG>(offset), CFile::begin);
    const std::size_t first_size = file.Read(m_first.data(), static_cast<UINT>(m_first.size()));
    const font::StoredGlyphHead head = font::ConvertStoredGlyphHead(std::span(m_first).first(first_size));
    const std::size_t length = std::max<std::size_t>(head.length, kLengthBytes);
    if (first_size < kLengthBytes || file.GetLength() - offset < length) {
        AfxThrowFileException(CFileException::genericException, -1, font.file_name);
    }
    // A record may be much longer than its pixels, whose size the caller knows.
    const std::size_t size = static_cast<std::size_t>(std::min<std::uint64_t>(length, GlyphBytes(head)));
    m_bytes = std::span(m_first).first(std::min(size, first_size));
    if (size <= first_size) return;
    m_larger.reset(new (std::nothrow) std::uint8_t[size]);
    if (!m_larger) AfxThrowMemoryException();
    std::memcpy(m_larger.get(), m_first.data(), first_size);
    const std::size_t rest = size - first_size;
    if (file.Read(m_larger.get() + first_size, static_cast<UINT>(rest)) != rest) {
        AfxThrowFileException(CFileException::genericException, -1, font.file_name);
    }
    m_bytes = {m_larger.get(), size};
}

void BuildStoredGlyph(const tag_font_memory& font, const tag_char_entry& entry, DIBSECTION* dib) {
    CFile file;
    if (!font::OpenGlyphFile(file, font)) return;
    const StoredRecord record(file, font, entry.glyph_offset);
    const font::StoredGlyphHead head = font::ConvertStoredGlyphHead(record.Bytes());
    if (head.width <= 0 || head.height <= 0 || record.Bytes().size() < font::kStoredGlyphHeadSize) return;
    const std::size_t row_size = static_cast<std::size_t>(head.width) * 4,
                      height = static_cast<std::size_t>(head.height);
    // Rows beyond the end of the record are not drawn, and bytes after the last pixel are ignored.
    const std::span<const std::uint8_t> pixels = record.Bytes().subspan(font::kStoredGlyphHeadSize);
    font::StraightenRowsReversed(pixels, row_size, height, BitmapBytes(dib));
}

}  // namespace

void CZelFont::BuildMFData(FontAddress font, DIBSECTION* dib, int font_index, DWORD char_code, int palette_set) {
    if (font == 0) return;
    const tag_font_memory& slot = *reinterpret_cast<const tag_font_memory*>(font);
    const tag_char_entry* entry = slot.Entry(char_code);
    if (entry == nullptr || !entry->HasGlyph()) return;
    if (entry->IsStored()) {
        BuildStoredGlyph(slot, *entry, dib);
    } else {
        BuildMFTagData(font, dib, font_index, char_code, palette_set);
    }
}

void CZelFont::BuildMFTagData(FontAddress font, DIBSECTION* dib, int /*font_index*/, DWORD char_code, int palette_set) {
    const tag_font_memory& slot = *reinterpret_cast<const tag_font_memory*>(font);
    const tag_char_entry* entry = slot.Entry(char_code);
    const std::span<std::uint8_t> bitmap = BitmapBytes(dib);
    if (entry == nullptr || slot.encoding_data == nullptr || bitmap.empty()) return;
    const GlyphColours colours(*this, palette_set);
    const std::ptrdiff_t row_size = std::ptrdiff_t{dib->dsBmih.biWidth} * 4;
    const font::PixelRows rows{bitmap.data() + bitmap.size() - row_size, -row_size, dib->dsBmih.biWidth,
                               dib->dsBmih.biHeight, static_cast<std::uint8_t>(m_BackColor >> 16)};
    font::DrawRunCodes(font::RunCodeReader({slot.encoding_data, slot.font_header->encoding_size}, entry->glyph_offset),
                       colours.Colours(), rows);
}
