#include "samples/disk/disk_font.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "samples/disk/artwork.h"

namespace zel::samples {
namespace {

constexpr int kRowInset = 2;
constexpr unsigned kSoftHyphen = 173;
constexpr unsigned kStoredBorder = 2;

std::vector<unsigned> CharCodes() {
    std::vector<unsigned> codes;
    for (unsigned code = 32; code < 127; ++code) codes.push_back(code);
    for (unsigned code = 160; code < files::kFontCharCount; ++code) {
        if (code != kSoftHyphen) codes.push_back(code);
    }
    return codes;
}

/// The extents shared by all characters of a font, in pixels around the pen.
struct Cell {
    int ascent = 0, descent = 0, left_pad = 0;
    EdgeExtent extent;
};

using Glyphs = std::map<unsigned, RasterGlyph>;

Cell CellOf(const Glyphs& glyphs, const EdgeExtent& extent) {
    Cell cell;
    cell.extent = extent;
    for (const auto& [code, glyph] : glyphs) {
        cell.ascent = std::max(cell.ascent, glyph.top);
        cell.descent = std::max(cell.descent, static_cast<int>(glyph.coverage.height) - glyph.top);
        if (!glyph.coverage.alpha.empty()) cell.left_pad = std::max(cell.left_pad, -glyph.left);
    }
    cell.left_pad += static_cast<int>(extent.left);
    return cell;
}

/// A character with space around it: its first column is `left_pad` pixels left of the pen, its first row `top` lines
/// above the baseline.
struct PlacedGlyph {
    files::Coverage face;
    int top = 0;
};

/// A character below the baseline gets additional lines at its top, so that its glyph_top isn't negative.
PlacedGlyph Place(const RasterGlyph& glyph, const Cell& cell, int blank_rows) {
    const int lift = std::max(0, -(glyph.top + static_cast<int>(cell.extent.above) + blank_rows));
    const unsigned left = static_cast<unsigned>(cell.left_pad + glyph.left);
    const unsigned above = cell.extent.above + static_cast<unsigned>(lift);
    PlacedGlyph placed;
    placed.face.width = left + glyph.coverage.width + cell.extent.right;
    placed.face.height = above + glyph.coverage.height + cell.extent.below;
    placed.face.alpha.assign(std::size_t{placed.face.width} * placed.face.height, 0);
    placed.top = glyph.top + static_cast<int>(above);
    for (unsigned y = 0; y < glyph.coverage.height; ++y) {
        for (unsigned x = 0; x < glyph.coverage.width; ++x) {
            placed.face.At(left + x, above + y) = glyph.coverage.At(x, y);
        }
    }
    return placed;
}

/// A blank is one line of background as wide as its advance, so that it has a size.
files::RunCodes BlankCodes(int advance) {
    files::RunCodes codes;
    for (auto left = static_cast<unsigned>(advance); left > 0; left -= std::min(left, files::kLongestRun)) {
        codes.push_back(files::BackgroundRun(std::min(left, files::kLongestRun)));
    }
    codes.push_back(files::EndOfLine());
    codes.push_back(files::EndOfGlyph());
    return codes;
}

void AddRunCodedGlyph(unsigned code, const RasterGlyph& glyph, const Cell& cell, const Edge& edge,
                      files::FontFile& file) {
    constexpr int kBlankRows = 1;  // drawing adds a blank line at the top
    const auto advance = static_cast<unsigned>(glyph.advance);
    if (glyph.coverage.alpha.empty()) return file.AddRunCoded(code, BlankCodes(glyph.advance), kBlankRows, advance);
    const PlacedGlyph placed = Place(glyph, cell, kBlankRows);
    const files::RunCodes codes = edge.type == EdgeType::kNone
                                      ? files::EncodeFace(placed.face)
                                      : files::EncodeFaceAndEdge(placed.face, DrawEdge(placed.face, edge));
    file.AddRunCoded(code, codes, static_cast<unsigned>(placed.top + kBlankRows), advance);
}

void AddStoredGlyph(unsigned code, const RasterGlyph& glyph, const Cell& cell, Finish finish, files::FontFile& file) {
    const auto advance = static_cast<unsigned>(glyph.advance);
    if (glyph.coverage.alpha.empty()) {
        return file.AddStored(code, {advance, 1, files::Bytes(std::size_t{4} * advance, 0)}, 0, advance);
    }
    const PlacedGlyph placed = Place(glyph, cell, 0);
    const files::Coverage border = DrawEdge(placed.face, {EdgeType::kBorder, 0, kStoredBorder});
    const auto metal = finish == Finish::kChrome ? Chrome : Gold;
    const Paint dark = finish == Finish::kChrome ? Paint{16, 24, 46, 1} : Paint{48, 26, 4, 1};
    files::StoredGlyph stored = PaintPixels(placed.face.width, placed.face.height, [&](unsigned x, unsigned y) {
        Paint face = metal((placed.top - static_cast<int>(y)) / static_cast<double>(cell.ascent));
        face.alpha = placed.face.At(x, y) / 255.0;
        Paint edge = dark;
        edge.alpha = border.At(x, y) / 255.0;
        return Over(face, edge);
    });
    file.AddStored(code, std::move(stored), static_cast<unsigned>(placed.top), advance);
}

void KeepKerning(const Rasterizer& rasterizer, const std::vector<unsigned>& codes, DiskFont& font) {
    for (const unsigned left : codes) {
        for (const unsigned right : codes) {
            const int kerning = rasterizer.Kerning(left, right);
            if (kerning != 0) font.kerning[{static_cast<char>(left), static_cast<char>(right)}] = kerning;
        }
    }
}

}  // namespace

int DiskFont::Advance(char character) const {
    const unsigned code = static_cast<unsigned char>(character);
    return code < files::kFontCharCount ? static_cast<int>(file.directory[code].glyph_metric) : 0;
}

int DiskFont::Kerning(char left, char right) const {
    const auto found = kerning.find({left, right});
    return found == kerning.end() ? 0 : found->second;
}

DiskFont MakeDiskFont(const FontDesign& design) {
    const Rasterizer rasterizer(design.face);
    const auto codes = CharCodes();
    Glyphs glyphs;
    for (const unsigned code : codes) glyphs.emplace(code, rasterizer.Draw(code));
    const bool is_stored = design.finish != Finish::kRunCoded;
    const Edge drawn = is_stored ? Edge{EdgeType::kBorder, 0, kStoredBorder} : design.edge;
    const Cell cell = CellOf(glyphs, ExtentOf(drawn));

    DiskFont font;
    font.number = design.number;
    font.left_pad = cell.left_pad;
    files::FontHeader& header = font.file.header;
    font.file.psos.type_name = "FONT";
    header.font_name = design.name;
    header.font_id_text = design.id_text;
    header.row_inset = kRowInset;
    header.row_top_offset = static_cast<int>(design.headroom);
    header.font_height = cell.ascent + cell.descent + static_cast<int>(EdgeHeight(drawn) + design.headroom);
    header.edge_type = static_cast<unsigned>(drawn.type);
    header.edge_direction = drawn.direction;
    header.edge_size = drawn.size;
    header.font_flags = design.flags;
    // The tallest character's bitmap begins at the row's upper limit; run-coded ones begin with a blank line.
    font.baseline = font.RowTop() + static_cast<int>(cell.extent.above) + cell.ascent + (is_stored ? 0 : 1);
    for (const auto& [code, glyph] : glyphs) {
        if (is_stored) {
            AddStoredGlyph(code, glyph, cell, design.finish, font.file);
        } else {
            AddRunCodedGlyph(code, glyph, cell, drawn, font.file);
        }
    }
    KeepKerning(rasterizer, codes, font);
    return font;
}

DiskFont MakeArtworkFont(unsigned number) {
    DiskFont font;
    font.number = number;
    font.file.psos.type_name = "FONT";
    font.file.header.font_name = "Artwork";
    font.file.header.font_id_text = "0060";
    font.file.header.font_height = 92;
    for (const auto which : {Artwork::kLowerThird, Artwork::kRule, Artwork::kStrip, Artwork::kDarkStrip, Artwork::kSun,
                             Artwork::kCloud, Artwork::kRain}) {
        files::StoredGlyph picture = PaintArtwork(which);
        const unsigned width = picture.width;
        font.file.AddStored(static_cast<unsigned>(which), std::move(picture), 0, width);
    }
    return font;
}

files::SampleBlock MakeSampleBlock(const FaceChoice& face) {
    const Rasterizer rasterizer(face);
    const auto sample_of = [&](char32_t character) {
        const files::Coverage drawn = rasterizer.Draw(character).coverage;
        return files::Sample{static_cast<int>(drawn.width), static_cast<int>(drawn.height), drawn.alpha};
    };
    return {1, sample_of(U'A'), sample_of(U'g')};
}

}  // namespace zel::samples
