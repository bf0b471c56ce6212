#include "host/glyph_bitmaps.h"

#include <new>

#include "host/crc32.h"
#include "host/module_text.h"
#include "platform/framework/exceptions.h"

namespace {

/// A glyph of more bytes isn't fetched: 8192 x 8192 pixels, far above any screen. The sizes come from a file.
constexpr std::uint64_t kMaxGlyphBytes = 8192ULL * 8192 * 4;
/// Pixels that are kept for further use; a message of ordinary text needs a tenth of it.
constexpr std::size_t kKeptBytes = std::size_t{64} << 20;

DIBSECTION BitmapOver(std::vector<std::uint8_t>& pixels, const CRect& rect) noexcept {
    DIBSECTION dib{};
    dib.dsBm.bmWidth = rect.Width();
    dib.dsBm.bmHeight = rect.Height();
    dib.dsBm.bmWidthBytes = rect.Width() * 4;
    dib.dsBm.bmPlanes = 1;
    dib.dsBm.bmBitsPixel = 32;
    dib.dsBm.bmBits = pixels.data();
    dib.dsBmih.biSize = sizeof dib.dsBmih;
    dib.dsBmih.biWidth = rect.Width();
    dib.dsBmih.biHeight = rect.Height();
    dib.dsBmih.biPlanes = 1;
    dib.dsBmih.biBitCount = 32;
    return dib;
}

}  // namespace

void GlyphBitmaps::SetFonts(CZelFont* fonts) {
    m_fonts = fonts;
    m_glyphs.clear();
    m_bytes = 0;
}

const GlyphBitmap& GlyphBitmaps::Get(const tag_CharInf& info, unsigned character) {
    return Find(info, character);
}

const GlyphBitmap& GlyphBitmaps::Demand(const tag_CharInf& info, unsigned character) {
    const GlyphBitmap& glyph = Find(info, character);
    if (glyph.broken) AfxThrowFileException(CFileException::genericException, -1, info.font_copy->file_name);
    return glyph;
}

std::optional<std::uint32_t> GlyphBitmaps::Checksum(const tag_CharInf& info, unsigned character) {
    GlyphBitmap& glyph = Find(info, character);
    if (!glyph.crc32 && !glyph.pixels.empty()) glyph.crc32 = Crc32(glyph.pixels);
    return glyph.crc32;
}

GlyphBitmap& GlyphBitmaps::Find(const tag_CharInf& info, unsigned character) {
    const Key key(info.font_copy, character, info.colour_set);
    if (const auto found = m_glyphs.find(key); found != m_glyphs.end()) return found->second;
    if (m_bytes > kKeptBytes) SetFonts(m_fonts);
    GlyphBitmap& glyph = m_glyphs[key];
    if (m_fonts != nullptr && info.font_copy != nullptr) Fetch(info, character, glyph);
    m_bytes += glyph.pixels.size();
    return glyph;
}

void GlyphBitmaps::Fetch(const tag_CharInf& info, unsigned character, GlyphBitmap& glyph) {
    const std::string name = "character " + std::to_string(character) + " of " + info.font_copy->file_name + ": ";
    const auto address = reinterpret_cast<FontAddress>(info.font_copy);
    try {
        int top = 0;
        glyph.rect = m_fonts->GetMFRect(address, info.slot, character, top, nullptr);
        if (glyph.rect.IsRectEmpty()) return;
        const std::uint64_t bytes =
            static_cast<std::uint64_t>(glyph.rect.Width()) * static_cast<std::uint64_t>(glyph.rect.Height()) * 4;
        if (bytes > kMaxGlyphBytes) {
            m_failures.push_back(name + "too large to be drawn");
            return;
        }
        std::vector<std::uint8_t> pixels(static_cast<std::size_t>(bytes));
        DIBSECTION dib = BitmapOver(pixels, glyph.rect);
        m_fonts->BuildMFData(address, &dib, info.slot, character, info.colour_set);
        glyph.pixels = std::move(pixels);
    } catch (CFileException* error) {
        glyph.broken = true;
        m_failures.push_back(name + TakeText(error));
    } catch (CException* error) {
        m_failures.push_back(name + TakeText(error));
    } catch (const std::bad_alloc&) {
        m_failures.push_back(name + "too large for the memory at hand");
    }
}
