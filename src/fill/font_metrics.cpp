#include "fill/font_metrics.h"

#include <algorithm>

#include "base/utf8.h"
#include "module/font/format/font_loader.h"
#include "module/font/format/measure_run_codes.h"
#include "module/font/format/stored_glyph.h"

namespace zel::fill {

namespace {

int WidthOf(const tag_char_entry& entry, const tag_font_memory& font, std::span<const std::uint8_t> file) {
    if (entry.IsStored()) {
        const auto record = file.subspan(std::min<std::size_t>(entry.glyph_offset, file.size()));
        return std::max<int>(0, font::ConvertStoredGlyphHead(record).width);
    }
    if (!entry.IsRunCoded() || font.encoding_data == nullptr) return 0;
    const std::span<const std::uint8_t> encoding(font.encoding_data, font.font_header->encoding_size);
    return font::MeasureRunCodes(font::RunCodeReader(encoding, entry.glyph_offset)).width;
}

}  // namespace

std::optional<FontMetrics> MeasureFont(std::span<const std::uint8_t> file, int number) {
    font::LoadedFont loaded;
    if (font::LoadFont(file, loaded) != font::FontOutcome::kRead) return std::nullopt;
    const tag_font_header& header = *loaded.slot.font_header;
    FontMetrics metrics;
    metrics.number = number;
    metrics.name = base::Utf8FromLatin1(header.Name());
    // As 16 bits, in which a row's limits are compared with them.
    metrics.row_top = static_cast<std::uint16_t>(header.row_top_offset + header.row_inset);
    metrics.row_bottom = static_cast<std::uint16_t>(header.font_height + header.row_inset + 2);
    metrics.top_offset = header.row_top_offset + header.row_inset;
    metrics.keeps_row_limits = (header.font_flags & kFontOwnLimits) != 0;
    for (unsigned code = 0; code < kDirectoryEntries; ++code) {
        const tag_char_entry& entry = loaded.slot.char_directory[code];
        const int width = WidthOf(entry, loaded.slot, file);
        metrics.glyphs[code] = {entry.HasGlyph(), entry.Metric() != 0 ? entry.Metric() : width, entry.Top()};
        if (width > 0) metrics.highest_top = std::max(metrics.highest_top, entry.Top());
    }
    // A blank that the font doesn't measure is as wide as one usually is.
    GlyphMetrics& blank = metrics.glyphs[kBlank];
    if (blank.advance == 0) blank.advance = std::max(1, header.font_height / 4);
    return metrics;
}

}  // namespace zel::fill
