#include "host/filejson/glyph_layout.h"

#include <algorithm>
#include <map>
#include <span>

#include "files/record_fields.h"

namespace zel::filejson {

namespace {

/// Appends the bytes from `begin` to `end`, where no glyph begins in between.
/// @param code  of the glyph that begins there; empty for none.
void AppendParts(const files::Bytes& encoding, std::size_t begin, std::size_t end, std::optional<unsigned> code,
                 std::vector<EncodingPart>& parts) {
    const std::span bytes = std::span(encoding).subspan(begin, end - begin);
    std::size_t used = 0;
    if (code) {
        EncodingPart& part = parts.emplace_back(EncodingPart{.code = code});
        while (bytes.size() - used >= 4) {
            std::uint32_t word = 0;
            files::ReadRecord<files::NumberFields<4>>(bytes.subspan(used), word);
            part.codes.push_back(word);
            used += 4;
            if (word == files::EndOfGlyph()) break;
        }
    }
    const auto rest = bytes.subspan(used);
    if (!rest.empty()) parts.push_back({.bytes = files::Bytes(rest.begin(), rest.end())});
}

}  // namespace

bool EncodingPart::IsWhole() const {
    const auto end = std::ranges::find(codes, files::EndOfGlyph());
    return end != codes.end() && end + 1 == codes.end();
}

GlyphLayout LayoutOf(const files::FontFile& font) {
    GlyphLayout layout;
    std::map<std::size_t, unsigned> first_code;  // by offset
    for (unsigned code = 0; code < files::kFontCharCount; ++code) {
        const files::CharEntry& entry = font.directory[code];
        GlyphPlace& place = layout.places[code];
        if (IsRunCoded(entry) && entry.glyph_offset < font.encoding.size()) {
            const auto [at, is_first] = first_code.try_emplace(entry.glyph_offset, code);
            if (!is_first) place.same_as = at->second;
        } else if (IsRunCoded(entry) || entry.glyph_offset != 0) {
            place.offset = entry.glyph_offset;
        }
    }
    std::size_t begin = 0;
    std::optional<unsigned> code;
    for (const auto& [offset, next_code] : first_code) {
        if (offset > begin || code) AppendParts(font.encoding, begin, offset, code, layout.parts);
        begin = offset;
        code = next_code;
    }
    if (begin < font.encoding.size()) AppendParts(font.encoding, begin, font.encoding.size(), code, layout.parts);
    return layout;
}

void ApplyLayout(const GlyphLayout& layout, files::FontFile& font) {
    std::map<unsigned, std::uint32_t> offsets;  // by code
    files::ByteWriter encoding;
    for (const EncodingPart& part : layout.parts) {
        if (part.code) offsets[*part.code] = static_cast<std::uint32_t>(encoding.Size());
        encoding.Append(part.code ? files::RunCodeBytes(part.codes) : part.bytes);
    }
    font.encoding = encoding.Written();
    for (unsigned code = 0; code < files::kFontCharCount; ++code) {
        const GlyphPlace& place = layout.places[code];
        const auto found = offsets.find(place.same_as.value_or(code));
        font.directory[code].glyph_offset = place.offset ? *place.offset : found != offsets.end() ? found->second : 0;
    }
}

}  // namespace zel::filejson
