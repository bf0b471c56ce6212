#include "host/fontkit/sfnt_tables.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "base/utf8.h"

namespace zel::fontkit {

namespace {

constexpr std::uint32_t kVersion1 = 0x00010000, kVersion3 = 0x00030000;
/// 2000-01-01, in seconds since 1904.
constexpr std::uint64_t kTime = 3029529600;

struct Bounds {
    int left = 0, bottom = 0, right = 0, top = 0;
};

Bounds BoundsOf(const GlyphOutline& outline) noexcept {
    constexpr int kMost = std::numeric_limits<int>::max();
    Bounds bounds{kMost, kMost, -kMost, -kMost};
    for (const auto& contour : outline.contours) {
        for (const GlyphPoint& point : contour) {
            bounds.left = std::min(bounds.left, point.x);
            bounds.right = std::max(bounds.right, point.x);
            bounds.bottom = std::min(bounds.bottom, point.y);
            bounds.top = std::max(bounds.top, point.y);
        }
    }
    return outline.contours.empty() ? Bounds() : bounds;
}

/// What several tables tell of all glyphs.
struct Extent {
    Bounds bounds;
    int largest_advance = 0, smallest_left = 0, smallest_right = 0, farthest_right = 0;
    int mean_advance = 0;
    bool is_monospaced = true;
    std::size_t most_points = 0, most_contours = 0;
};

Extent ExtentOf(const std::vector<SfntGlyph>& glyphs) {
    Extent extent;
    bool is_first = true;
    std::int64_t advances = 0;
    int common_advance = 0, advancing = 0;
    for (const SfntGlyph& glyph : glyphs) {
        extent.largest_advance = std::max(extent.largest_advance, glyph.advance);
        if (glyph.advance > 0) {
            advances += glyph.advance;
            // The first glyph is that for missing characters.
            if (advancing == 1) common_advance = glyph.advance;
            if (advancing > 1 && glyph.advance != common_advance) extent.is_monospaced = false;
            ++advancing;
        }
        if (glyph.outline.contours.empty()) continue;
        const Bounds bounds = BoundsOf(glyph.outline);
        const int right = glyph.advance - bounds.right;
        if (is_first) {
            extent.bounds = bounds;
            extent.smallest_left = bounds.left;
            extent.smallest_right = right;
            extent.farthest_right = bounds.right;
            is_first = false;
        }
        extent.bounds.left = std::min(extent.bounds.left, bounds.left);
        extent.bounds.bottom = std::min(extent.bounds.bottom, bounds.bottom);
        extent.bounds.right = std::max(extent.bounds.right, bounds.right);
        extent.bounds.top = std::max(extent.bounds.top, bounds.top);
        extent.smallest_left = std::min(extent.smallest_left, bounds.left);
        extent.smallest_right = std::min(extent.smallest_right, right);
        extent.farthest_right = std::max(extent.farthest_right, bounds.right);
        extent.most_points =
            std::max<std::size_t>(extent.most_points, static_cast<std::size_t>(glyph.outline.PointCount()));
        extent.most_contours = std::max(extent.most_contours, glyph.outline.contours.size());
    }
    extent.mean_advance = advancing == 0 ? 0 : static_cast<int>(advances / advancing);
    return extent;
}

/// A difference of coordinates: nothing, one byte or two. @return the bits of the point's flag.
unsigned AppendDelta(int delta, unsigned short_bit, unsigned same_bit, SfntTable& bytes) {
    if (delta == 0) return same_bit;
    if (delta < -255 || delta > 255) {
        bytes.S16(delta);
        return 0;
    }
    bytes.U8(static_cast<unsigned>(delta < 0 ? -delta : delta));
    return short_bit | (delta > 0 ? same_bit : 0);
}

void AppendGlyph(const GlyphOutline& outline, SfntTable& glyf) {
    constexpr unsigned kOnCurve = 1, kShortX = 2, kShortY = 4, kSameX = 16, kSameY = 32;
    if (outline.contours.empty()) return;
    const Bounds bounds = BoundsOf(outline);
    glyf.S16(static_cast<int>(outline.contours.size()));
    glyf.S16(bounds.left).S16(bounds.bottom).S16(bounds.right).S16(bounds.top);
    std::size_t count = 0;
    for (const auto& contour : outline.contours) glyf.U16(static_cast<unsigned>((count += contour.size()) - 1));
    glyf.U16(0);  // no instructions
    SfntTable flags, x, y;
    GlyphPoint last;
    for (const auto& contour : outline.contours) {
        for (const GlyphPoint& point : contour) {
            const unsigned x_bits = AppendDelta(point.x - last.x, kShortX, kSameX, x);
            flags.U8(kOnCurve | x_bits | AppendDelta(point.y - last.y, kShortY, kSameY, y));
            last = point;
        }
    }
    glyf.Text(flags.Bytes()).Text(x.Bytes()).Text(y.Bytes()).Pad(4);
}

void AddGlyphTables(const std::vector<SfntGlyph>& glyphs, SfntTables& tables) {
    SfntTable& glyf = tables["glyf"];
    SfntTable& loca = tables["loca"];
    SfntTable& hmtx = tables["hmtx"];
    for (const SfntGlyph& glyph : glyphs) {
        loca.U32(static_cast<std::uint32_t>(glyf.Size()));
        AppendGlyph(glyph.outline, glyf);
        hmtx.U16(static_cast<unsigned>(glyph.advance)).S16(BoundsOf(glyph.outline).left);
    }
    loca.U32(static_cast<std::uint32_t>(glyf.Size()));
}

SfntTable HeadTable(const SfntFont& font, const Extent& extent) {
    // The baseline is at 0, the left sides are those of the outlines, and sizes are rounded to whole pixels.
    constexpr unsigned kFlags = 0b1011, kMagic = 0x5F0F3CF5, kLegible = 8, kLeftToRight = 2, kLongLoca = 1;
    SfntTable head;
    head.U32(kVersion1).U32(kVersion1).U32(0).U32(kMagic).U16(kFlags);
    head.U16(static_cast<unsigned>(font.scale.UnitsPerEm())).U64(kTime).U64(kTime);
    head.S16(extent.bounds.left).S16(extent.bounds.bottom).S16(extent.bounds.right).S16(extent.bounds.top);
    return head.U16(0).U16(kLegible).U16(kLeftToRight).U16(kLongLoca).U16(0);
}

SfntTable HheaTable(const SfntFont& font, const Extent& extent) {
    SfntTable hhea;
    hhea.U32(kVersion1).S16(font.ascender).S16(font.descender).S16(0);
    hhea.U16(static_cast<unsigned>(extent.largest_advance)).S16(extent.smallest_left).S16(extent.smallest_right);
    hhea.S16(extent.farthest_right).S16(1).S16(0).S16(0).U64(0).S16(0);
    return hhea.U16(static_cast<unsigned>(font.glyphs->size()));
}

SfntTable MaxpTable(const SfntFont& font, const Extent& extent) {
    constexpr unsigned kZones = 2, kStack = 16;
    SfntTable maxp;
    maxp.U32(kVersion1).U16(static_cast<unsigned>(font.glyphs->size()));
    maxp.U16(static_cast<unsigned>(extent.most_points)).U16(static_cast<unsigned>(extent.most_contours));
    maxp.U16(0).U16(0).U16(kZones).U16(0).U16(0).U16(0).U16(0).U16(kStack);
    return maxp.U16(0).U16(0).U16(0);
}

/// Characters in a row whose glyphs are too.
struct Segment {
    unsigned first, last;
    std::size_t glyph;
};

std::vector<Segment> SegmentsOf(const std::map<unsigned, std::size_t>& characters) {
    std::vector<Segment> segments;
    for (const auto& [character, glyph] : characters) {
        const bool follows = !segments.empty() && segments.back().last + 1 == character &&
                             segments.back().glyph + (character - segments.back().first) == glyph;
        if (follows) {
            segments.back().last = character;
        } else {
            segments.push_back({character, character, glyph});
        }
    }
    return segments;
}

SfntTable CmapTable(const std::map<unsigned, std::size_t>& characters) {
    constexpr unsigned kUnicode = 0, kUnicode2 = 3, kWindows = 3, kWindowsUnicode = 1, kHeader = 4 + 2 * 8;
    std::vector<Segment> segments = SegmentsOf(characters);
    segments.push_back({0xFFFF, 0xFFFF, 0});
    const auto count = static_cast<unsigned>(segments.size());
    unsigned log = 0;
    while ((2U << log) <= count) ++log;
    SfntTable ends, starts, deltas, offsets;
    for (const Segment& segment : segments) {
        ends.U16(segment.last);
        starts.U16(segment.first);
        // 1 takes the last segment to glyph 0.
        deltas.U16(segment.first == 0xFFFF ? 1 : static_cast<unsigned>(segment.glyph - segment.first) & 0xFFFF);
        offsets.U16(0);
    }
    SfntTable cmap;
    cmap.U16(0).U16(2).U16(kUnicode).U16(kUnicode2).U32(kHeader).U16(kWindows).U16(kWindowsUnicode).U32(kHeader);
    cmap.U16(4).U16(16 + count * 8).U16(0).U16(count * 2).U16(2U << log).U16(log).U16(count * 2 - (2U << log));
    return cmap.Text(ends.Bytes()).U16(0).Text(starts.Bytes()).Text(deltas.Bytes()).Text(offsets.Bytes());
}

/// Names have at most this many characters, of the basic plane.
constexpr std::size_t kLongestName = 63;

std::string Utf16Of(std::string_view utf8) {
    SfntTable utf16;
    for (std::size_t length = 0; !utf8.empty() && length < kLongestName; ++length) {
        const base::Utf8Character first = base::FirstCharacter(utf8);
        utf16.U16(base::IsControl(first.code) || first.code > 0xFFFF ? 0x20 : static_cast<unsigned>(first.code));
        utf8.remove_prefix(first.size);
    }
    return utf16.Bytes();
}

/// What PostScript allows in a name.
std::string PostScriptName(std::string_view name) {
    std::string plain;
    for (const char c : name.substr(0, kLongestName)) {
        const bool is_plain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if (is_plain) plain += c;
        if (c == ' ' && !plain.empty() && plain.back() != '-') plain += '-';
    }
    return plain.empty() ? "Font" : plain;
}

SfntTable NameTable(const SfntFont& font) {
    constexpr unsigned kWindows = 3, kUnicode = 1, kEnglish = 0x409;
    // Family, style, identity, full name, version and PostScript name.
    const std::string texts[] = {font.family, "Regular",       font.identity,
                                 font.family, "Version 1.000", PostScriptName(font.identity)};
    constexpr unsigned kCount = std::size(texts);
    SfntTable name, strings;
    name.U16(0).U16(kCount).U16(6 + kCount * 12);
    unsigned id = 1;
    for (const std::string& text : texts) {
        const std::string utf16 = Utf16Of(text);
        name.U16(kWindows).U16(kUnicode).U16(kEnglish).U16(id++).U16(static_cast<unsigned>(utf16.size()));
        name.U16(static_cast<unsigned>(strings.Size()));
        strings.Text(utf16);
    }
    return name.Text(strings.Bytes());
}

/// The height of a character's outline above the baseline; 0 without one.
int HeightOf(const SfntFont& font, unsigned character) {
    const auto found = font.characters->find(character);
    return found == font.characters->end() ? 0 : std::max(0, BoundsOf((*font.glyphs)[found->second].outline).top);
}

SfntTable Os2Table(const SfntFont& font, const Extent& extent) {
    constexpr unsigned kVersion = 4, kMedium = 400, kNormalWidth = 5, kInstallable = 0;
    constexpr unsigned kRegular = 1U << 6, kUseTypographic = 1U << 7;
    // Basic Latin and Latin-1 Supplement; in the second word the private use area, bit 60.
    constexpr std::uint32_t kLatin = 0b11, kPrivate = 1U << (60 - 32), kCodePageLatin1 = 1;
    const int em = font.scale.UnitsPerEm();
    SfntTable os2;
    os2.U16(kVersion).S16(extent.mean_advance).U16(kMedium).U16(kNormalWidth).U16(kInstallable);
    // Size and place of subscripts and superscripts, and of the line that strikes through.
    os2.S16(em * 13 / 20)
        .S16(em * 3 / 5)
        .S16(0)
        .S16(em / 13)
        .S16(em * 13 / 20)
        .S16(em * 3 / 5)
        .S16(0)
        .S16(em * 12 / 25);
    os2.S16(std::max(em / 20, 1)).S16(em / 4).S16(0);
    for (int digit = 0; digit < 10; ++digit) os2.U8(0);
    os2.U32(kLatin).U32(kPrivate).U32(0).U32(0).Text("    ").U16(kRegular | kUseTypographic);
    const bool none = font.characters->empty();
    os2.U16(none ? 0 : font.characters->begin()->first).U16(none ? 0 : font.characters->rbegin()->first);
    os2.S16(font.ascender).S16(font.descender).S16(0);
    os2.U16(static_cast<unsigned>(std::max({font.ascender, extent.bounds.top, 0})));
    os2.U16(static_cast<unsigned>(std::max({-font.descender, -extent.bounds.bottom, 0})));
    os2.U32(kCodePageLatin1).U32(0).S16(HeightOf(font, 'x')).S16(HeightOf(font, 'H'));
    return os2.U16(0).U16(' ').U16(1);
}

SfntTable PostTable(const SfntFont& font, const Extent& extent) {
    const int em = font.scale.UnitsPerEm();
    SfntTable post;
    post.U32(kVersion3).U32(0).S16(-em / 10).S16(std::max(em / 20, 1)).U32(extent.is_monospaced ? 1 : 0);
    return post.U64(0).U64(0);
}

/// Grey at every size, never fitted to the pixels of the screen: the outlines are exact as they are.
SfntTable GaspTable() {
    constexpr unsigned kAnySize = 0xFFFF, kSmooth = 0b1010;
    return SfntTable().U16(1).U16(1).U16(kAnySize).U16(kSmooth);
}

/// Turns instructions off. A font without a program would be fitted to the pixels by guesses, with one of the common
/// seven bytes too.
SfntTable PrepTable() {
    SfntTable prep;
    for (const unsigned byte : {0xB8, 0x01, 0xFF, 0x85, 0xB0, 0x04, 0x8D, 0xB1, 0x01, 0x01, 0x8E}) prep.U8(byte);
    return prep;
}

}  // namespace

SfntGlyph MissingGlyph(const FontScale& scale) {
    const int em = scale.UnitsPerEm(), line = std::max(em / 20, 1);
    const int right = std::max(em * 2 / 5, line * 3), top = std::max(em * 3 / 5, line * 3);
    // The inner contour runs against the outer one.
    return {{{{{0, 0}, {0, top}, {right, top}, {right, 0}},
              {{line, line}, {right - line, line}, {right - line, top - line}, {line, top - line}}}},
            em / 2};
}

SfntTables BasicTables(const SfntFont& font) {
    const Extent extent = ExtentOf(*font.glyphs);
    SfntTables tables;
    AddGlyphTables(*font.glyphs, tables);
    tables["head"] = HeadTable(font, extent);
    tables["hhea"] = HheaTable(font, extent);
    tables["maxp"] = MaxpTable(font, extent);
    tables["cmap"] = CmapTable(*font.characters);
    tables["name"] = NameTable(font);
    tables["OS/2"] = Os2Table(font, extent);
    tables["post"] = PostTable(font, extent);
    tables["gasp"] = GaspTable();
    tables["prep"] = PrepTable();
    return tables;
}

}  // namespace zel::fontkit
