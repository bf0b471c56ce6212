#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "font/glyph_file.h"
#include "font/run_codes.h"
#include "font/stored_glyph.h"
#include "font/zel_font.h"
#include "platform/framework/cfile.h"
#include "platform/framework/exceptions.h"

namespace {

using Bytes = std::unique_ptr<std::uint8_t[]>;

Bytes AllocateBytes(std::size_t size) {
    Bytes bytes(new (std::nothrow) std::uint8_t[size]);
    if (!bytes) AfxThrowMemoryException();
    return bytes;
}

// The pixels of a bitmap; empty for one without any.
std::span<std::uint8_t> BitmapBytes(const DIBSECTION* dib) noexcept {
    if (dib == nullptr || dib->dsBm.bmBits == nullptr || dib->dsBmih.biWidth <= 0 || dib->dsBmih.biHeight <= 0)
        return {};
    const std::size_t width = static_cast<std::size_t>(dib->dsBmih.biWidth),
                      height = static_cast<std::size_t>(dib->dsBmih.biHeight);
    if (width > SIZE_MAX / 4 / height) return {};
    return {static_cast<std::uint8_t*>(dib->dsBm.bmBits), width * height * 4};
}

// The colours of a glyph drawn with a colour set of the palette block, or without one.
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

    RunColours Colours() const noexcept { return {{m_colours, m_count}, m_background}; }

  private:
    static RunColour FromPacked(COLORREF colour) noexcept {
        return {static_cast<std::uint8_t>(colour), static_cast<std::uint8_t>(colour >> 8),
                static_cast<std::uint8_t>(colour >> 16)};
    }

    RunColour m_colours[kSetEntries] = {};
    std::size_t m_count = 0;
    RunColour m_background;
};

// The whole record of a stored glyph. Takes memory only for what the file holds of it.
struct StoredRecord {
    StoredGlyphHead head{};
    Bytes bytes;
    std::size_t size = 0;
};

StoredRecord ReadStoredRecord(CFile& file, const tag_font_memory& font, std::uint32_t offset) {
    std::uint8_t length_bytes[4] = {};
    file.Seek(static_cast<LONGLONG>(offset), CFile::begin);
    if (file.Read(length_bytes, sizeof length_bytes) != sizeof length_bytes) {
        AfxThrowFileException(CFileException::genericException, -1, font.file_name);
    }
    StoredRecord record;
    const std::uint32_t length = ConvertStoredGlyphHead(length_bytes).length;
    const std::uint32_t rest = length - std::min<std::uint32_t>(length, sizeof length_bytes);
    if (file.GetLength() < static_cast<ULONGLONG>(offset) + sizeof length_bytes + rest) {
        AfxThrowFileException(CFileException::genericException, -1, font.file_name);
    }
    record.size = sizeof length_bytes + rest;
    record.bytes = AllocateBytes(record.size);
    std::memcpy(record.bytes.get(), length_bytes, sizeof length_bytes);
    if (file.Read(record.bytes.get() + sizeof length_bytes, rest) != rest) {
        AfxThrowFileException(CFileException::genericException, -1, font.file_name);
    }
    record.head = ConvertStoredGlyphHead({record.bytes.get(), record.size});
    return record;
}

void BuildStoredGlyph(const tag_font_memory& font, const tag_char_entry& entry, DIBSECTION* dib) {
    CFile file;
    if (!OpenGlyphFile(file, font)) return;
    const StoredRecord record = ReadStoredRecord(file, font, entry.glyph_offset);
    if (record.head.width <= 0 || record.head.height <= 0 || record.size < kStoredGlyphHeadSize) return;
    const std::size_t row_size = static_cast<std::size_t>(record.head.width) * 4,
                      height = static_cast<std::size_t>(record.head.height);
    // Rows that the record is too short for aren't drawn; bytes behind the last pixel aren't looked at.
    const std::span<const std::uint8_t> pixels(record.bytes.get() + kStoredGlyphHeadSize,
                                               record.size - kStoredGlyphHeadSize);
    StraightenRowsReversed(pixels, row_size, height, BitmapBytes(dib));
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
    const PixelRows rows{bitmap.data() + bitmap.size() - row_size, -row_size, dib->dsBmih.biWidth, dib->dsBmih.biHeight,
                         static_cast<std::uint8_t>(m_BackColor >> 16)};
    DrawRunCodes(RunCodeReader({slot.encoding_data, slot.font_header->encoding_size}, entry->glyph_offset),
                 colours.Colours(), rows);
}
