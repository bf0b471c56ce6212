#include <cstdint>

#include "module/contract/zel_font.h"
#include "module/font/format/measure_run_codes.h"
#include "module/font/format/stored_glyph.h"
#include "module/font/glyph_file.h"
#include "platform/framework/cfile.h"
#include "platform/framework/exceptions.h"

using namespace zel;

namespace {

CRect StoredGlyphRect(const tag_font_memory& font, const tag_char_entry& entry, bool* flag) {
    CFile file;
    if (!font::OpenGlyphFile(file, font)) return CRect(0, 0, 0, 0);
    std::uint8_t bytes[font::kStoredGlyphHeadSize] = {};
    file.Seek(static_cast<LONGLONG>(std::uint32_t{entry.glyph_offset}), CFile::begin);
    const UINT size = file.Read(bytes, sizeof bytes);
    const font::StoredGlyphHead head = font::ConvertStoredGlyphHead(bytes);
    // The flag counts even if the file ends after its word.
    constexpr UINT kFlagsEnd = 6;
    if (flag != nullptr && size >= kFlagsEnd) *flag = head.Flag();
    file.Close();
    if (size != sizeof bytes) AfxThrowFileException(CFileException::genericException, -1, font.file_name);
    return CRect(0, 0, head.width, head.height);
}

}  // namespace

CRect CZelFont::GetMFRect(FontAddress font, int font_index, DWORD char_code, int& top, bool* flag) {
    if (font == 0) return CRect(0, 0, 0, 0);
    const tag_font_memory& slot = *reinterpret_cast<const tag_font_memory*>(font);
    const tag_char_entry* entry = slot.Entry(char_code);
    if (entry == nullptr || !entry->HasGlyph()) return CRect(0, 0, 0, 0);
    if (entry->IsStored()) return StoredGlyphRect(slot, *entry, flag);
    return GetTagRect(font, font_index, char_code, top);
}

CRect CZelFont::GetTagRect(FontAddress font, int /*font_index*/, DWORD char_code, int& top) {
    const tag_font_memory& slot = *reinterpret_cast<const tag_font_memory*>(font);
    const tag_char_entry* entry = slot.Entry(char_code);
    if (entry == nullptr) return CRect(0, 0, 0, 0);
    top = entry->Top();
    if (slot.encoding_data == nullptr) return CRect(0, 0, 0, 0);
    const font::GlyphSize size = font::MeasureRunCodes(
        font::RunCodeReader({slot.encoding_data, slot.font_header->encoding_size}, entry->glyph_offset));
    return CRect(0, 0, size.width, size.height);
}
