#include "host/fontkit/font_kit.h"

#include <map>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "files/run_codes.h"
#include "host/fontkit/sfnt_writer.h"
#include "host/host_disk.h"
#include "host/run/font_run.h"
#include "module/contract/zel_font.h"

namespace zel::test {

namespace {

using fontkit::ArtKind;
using fontkit::ArtLayers;
using fontkit::FontArt;
using fontkit::GlyphArt;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A font of a face over an edge with partly covered pixels, and of all operations.
files::FontFile EdgedFont() {
    files::FontFile font;
    font.header.font_name = "Edged";
    font.header.font_height = 24;
    files::Coverage face{8, 6, std::vector<std::uint8_t>(48)}, edge = face;
    for (unsigned at = 0; at < 48; ++at) {
        const unsigned x = at % 8, y = at / 8;
        edge.alpha[at] = static_cast<std::uint8_t>(x * 31 + y * 7);
        face.alpha[at] = x > 2 ? static_cast<std::uint8_t>(y * 51) : 0;
    }
    font.AddRunCoded('A', files::EncodeFaceAndEdge(face, edge), 6, 9);
    font.AddRunCoded('B', files::EncodeFace(face), 5, 0);
    font.AddRunCoded(
        'C',
        {files::ColourRun(5, 90, 3), files::BackgroundRun(2), files::BlendedRun(9, 20, 2), files::EndOfLine(),
         files::Stay(2, 200), files::BlendedStay(40, 90), files::BlendedRun(1, 60, 3), files::EndOfGlyph()},
        900, 4);
    font.AddRunCoded(' ', {files::BackgroundRun(4), files::EndOfGlyph()}, 2, 7);
    return font;
}

class Kit : public HostDisk {
  protected:
    /// @param check  called with the fonts while they are loaded.
    FontArt ArtOf(const files::FontFile& font, ArtLayers layers = ArtLayers::kNone, std::size_t missing = 0,
                  const std::function<void(CZelFont&, const FontArt&)>& check = {}) {
        const files::Bytes file = files::WriteFont(font);
        samples::WriteWholeFile(Path("MACHINE/.0001"), std::span(file).first(file.size() - missing));
        run::FontRunRequest request;
        request.file = Path("MACHINE/.0001");
        FontArt art;
        const run::FontRunOutcome outcome = run::RunFont(request, {}, [&](CZelFont& fonts) {
            art = fontkit::ReadFontArt(fonts, fontkit::DefaultColourSets(), layers);
            if (check) check(fonts, art);
        });
        EXPECT_TRUE(outcome.Done()) << outcome.failure;
        return art;
    }

    /// The module's own pixels of a glyph: blue, green, red, alpha, bottom row first.
    static std::vector<std::uint8_t> DrawnByTheModule(CZelFont& fonts, const GlyphArt& glyph, int set) {
        std::vector<std::uint8_t> bgra(glyph.levels.size() * 4);
        DIBSECTION dib{};
        dib.dsBm.bmBits = bgra.data();
        dib.dsBmih.biWidth = glyph.width;
        dib.dsBmih.biHeight = glyph.height;
        fonts.BuildMFData(reinterpret_cast<FontAddress>(&fonts.m_Slots[0]), &dib, 0, glyph.code, set);
        return bgra;
    }
};

TEST_F(Kit, GivesThePixelsThatTheModuleDrawsInEachColourSet) {
    int compared = 0;
    ArtOf(EdgedFont(), ArtLayers::kNone, 0, [&](CZelFont& fonts, const FontArt& art) {
        for (unsigned set = 0; set < 8; ++set) {
            for (const GlyphArt& glyph : art.glyphs) {
                if (glyph.IsBlank()) continue;
                const std::vector<std::uint8_t> bgra = DrawnByTheModule(fonts, glyph, static_cast<int>(set));
                for (std::size_t pixel = 0; pixel < glyph.levels.size(); ++pixel) {
                    const auto width = static_cast<std::size_t>(glyph.width);
                    const std::size_t row = static_cast<std::size_t>(glyph.height) - 1 - pixel / width;
                    const std::uint8_t* drawn = &bgra[(row * width + pixel % width) * 4];
                    ASSERT_EQ(art.PixelOf(glyph, pixel, set), (picture::Rgba{drawn[2], drawn[1], drawn[0], drawn[3]}))
                        << glyph.code << " in set " << set << ", pixel " << pixel;
                    ++compared;
                }
            }
        }
    });
    EXPECT_GT(compared, 1000);
}

TEST_F(Kit, MeasuresGlyphsLinesAndTheBlank) {
    const FontArt art = ArtOf(EdgedFont());
    EXPECT_EQ(art.base, 900);
    EXPECT_EQ(art.line_height, 24);
    std::vector<int> advances;
    std::vector<ArtKind> kinds;
    for (const GlyphArt& glyph : art.glyphs) {
        advances.push_back(glyph.advance);
        kinds.push_back(glyph.kind);
    }
    EXPECT_THAT(advances, ElementsAre(7, 9, 8, 4)) << "B has no distance of its own, but a width";
    EXPECT_EQ(kinds.front(), ArtKind::kBlank);
    EXPECT_EQ(ArtOf(BlockFont()).glyphs.front().advance, 5) << "a quarter of the height, as in a filled field";
}

TEST_F(Kit, LayersAddUpToTheGlyph) {
    const FontArt art = ArtOf(EdgedFont(), ArtLayers::kEach);
    for (const GlyphArt& glyph : art.glyphs) {
        if (glyph.IsBlank()) continue;
        EXPECT_EQ(glyph.layers.front().coverage.bytes, glyph.levels);
        for (std::size_t layer = 1; layer < glyph.layers.size(); ++layer) {
            EXPECT_LT(glyph.layers[layer].colour_index, glyph.layers[layer - 1].colour_index);
            for (std::size_t pixel = 0; pixel < glyph.levels.size(); ++pixel)
                ASSERT_LE(glyph.layers[layer].coverage.bytes[pixel], glyph.layers[layer - 1].coverage.bytes[pixel]);
        }
    }
    const GlyphArt& edged = art.glyphs[1];
    ASSERT_EQ(edged.layers.size(), 2U);
    EXPECT_EQ(edged.layers.back().colour_index, 1U);
    // In the last line the face covers everything from the fourth column on.
    const auto last_line = static_cast<std::size_t>(edged.width) * 6;
    EXPECT_EQ(edged.layers.back().coverage.bytes[last_line + 2], 0);
    EXPECT_EQ(edged.layers.back().coverage.bytes[last_line + 3], 255);
}

TEST_F(Kit, LosesNothingButTheGlyphThatIsDamagedOrTooLarge) {
    files::FontFile font = StoredFont();
    font.AddStored('B', {.width = 2, .height = 2, .pixels = files::Bytes(16, 0)}, 2, 2);
    font.AddStored('C', {.width = 5000, .height = 1, .pixels = files::Bytes(20000, 255)}, 2, 2);
    font.AddStored('D', {.width = 2, .height = 2, .pixels = files::Bytes(16, 255)}, 2, 2);
    const FontArt art = ArtOf(font, ArtLayers::kNone, 4);
    std::vector<unsigned> codes;
    for (const GlyphArt& glyph : art.glyphs) codes.push_back(glyph.code);
    EXPECT_THAT(codes, ElementsAre(' ', 'A', 'B'));
    ASSERT_EQ(art.lost.size(), 2U);
    EXPECT_EQ(art.lost[0].code, unsigned{'C'});
    EXPECT_EQ(art.lost[0].reason, "5000 x 1 pixels are too many for a page");
    EXPECT_EQ(art.lost[1].code, unsigned{'D'});
    EXPECT_EQ(art.glyphs[1].pixels.at(3), (picture::Rgba{255, 0, 0, 255}));
}

TEST_F(Kit, UsesTheColoursOfAMessage) {
    files::MessageFile message = OneRow("A");
    message.palette.emplace();
    message.palette->entries.assign(256, 0x20304050);
    const fontkit::ColourSets sets = fontkit::ColourSetsOfMessage(files::WriteMessage(message));
    EXPECT_EQ(fontkit::HexColour(sets[3][1]), "#502030");
    EXPECT_EQ(fontkit::HexColour(fontkit::ColourSetsOfMessage(files::WriteMessage(OneRow("A")))[1][1]), "#00BF00");
    EXPECT_THROW(fontkit::ColourSetsOfMessage(files::WriteFont(BlockFont())), std::runtime_error);
}

/// A font whose glyphs have these sizes.
FontArt ArtOfSizes(const std::vector<std::pair<int, int>>& sizes) {
    FontArt art;
    for (const auto& [width, height] : sizes) {
        GlyphArt& glyph = art.glyphs.emplace_back();
        glyph.code = static_cast<unsigned>(art.glyphs.size());
        glyph.kind = ArtKind::kRunCoded;
        glyph.width = width;
        glyph.height = height;
    }
    return art;
}

TEST(Atlas, KeepsGlyphsApartOnPagesOfPowersOfTwo) {
    std::vector<std::pair<int, int>> many, large;
    for (int index = 0; index < 190; ++index) many.emplace_back(4 + index * 37 % 90, 3 + index * 53 % 70);
    for (int index = 0; index < 6; ++index) large.emplace_back(fontkit::kLargestGlyph, 1500 + index * 300);
    for (const auto& sizes : {many, large, {{fontkit::kLargestGlyph, fontkit::kLargestGlyph}}, {}}) {
        const FontArt art = ArtOfSizes(sizes);
        const fontkit::Atlas atlas = fontkit::ArrangeGlyphs(art);
        EXPECT_EQ(atlas.page_width & (atlas.page_width - 1), 0);
        EXPECT_EQ(atlas.page_height & (atlas.page_height - 1), 0);
        EXPECT_LE(std::max(atlas.page_width, atlas.page_height), 4096);
        EXPECT_EQ(atlas.page_count > 1, sizes.size() == 6U);
        for (std::size_t a = 0; a < sizes.size(); ++a) {
            const fontkit::AtlasPlace& place = atlas.places[a].value();
            ASSERT_LT(place.page, atlas.page_count);
            ASSERT_TRUE(place.x >= 1 && place.y >= 1 && place.x + sizes[a].first < atlas.page_width &&
                        place.y + sizes[a].second < atlas.page_height);
            for (std::size_t b = 0; b < a; ++b) {
                const fontkit::AtlasPlace& other = atlas.places[b].value();
                const bool apart = other.page != place.page || other.x + sizes[b].first < place.x ||
                                   place.x + sizes[a].first < other.x || other.y + sizes[b].second < place.y ||
                                   place.y + sizes[a].second < other.y;
                ASSERT_TRUE(apart) << a << " and " << b;
            }
        }
    }
}

std::uint32_t WordAt(const std::string& file, std::size_t at) {
    std::uint32_t word = 0;
    for (std::size_t byte = 0; byte < 4; ++byte)
        word = word << 8 | (at + byte < file.size() ? static_cast<std::uint8_t>(file[at + byte]) : 0);
    return word;
}

std::uint32_t SumOf(const std::string& bytes) {
    std::uint32_t sum = 0;
    for (std::size_t at = 0; at < bytes.size(); at += 4) sum += WordAt(bytes, at);
    return sum;
}

TEST_F(Kit, FontFilesHaveTheirTablesWithTheRightSums) {
    const FontArt art = ArtOf(EdgedFont(), ArtLayers::kEach);
    const std::string layered = fontkit::LayeredTrueType(art, {"0001"}, {10, 11}).bytes;
    const std::string pixels = fontkit::PixelTrueType(art, {"0001"}, 7).bytes;
    EXPECT_EQ(layered, fontkit::LayeredTrueType(art, {"0001"}, {10, 11}).bytes);
    for (const std::string& file : {layered, pixels}) {
        EXPECT_EQ(SumOf(file), 0xB1B0AFBA);
        std::string last;
        const unsigned count = WordAt(file, 4) >> 16;
        for (std::size_t record = 12; record < 12 + count * 16; record += 16) {
            const std::string tag = file.substr(record, 4);
            EXPECT_LT(last, tag);
            last = tag;
            const std::uint32_t offset = WordAt(file, record + 8), size = WordAt(file, record + 12);
            EXPECT_EQ(offset % 4, 0U);
            ASSERT_LE(offset + size, file.size());
            std::string table = file.substr(offset, size);
            if (tag == "head") table.replace(8, 4, 4, '\0');
            EXPECT_EQ(SumOf(table), WordAt(file, record + 4)) << tag;
        }
    }
    EXPECT_THAT(layered.substr(0, 300), testing::AllOf(HasSubstr("COLR"), HasSubstr("CPAL"), Not(HasSubstr("sbix"))));
    EXPECT_THAT(pixels.substr(0, 300), testing::AllOf(Not(HasSubstr("COLR")), HasSubstr("sbix")));
}

TEST_F(Kit, NamesEveryFileThatItWritesAndNoOther) {
    const fontkit::FontKit kit(ArtOf(EdgedFont(), ArtLayers::kEach), "0001", {.true_type = true});
    std::map<std::string, std::string> files;
    std::vector<std::string> names;
    kit.Write([&](const std::string& name, std::string_view bytes) {
        names.push_back(name);
        EXPECT_TRUE(fontkit::IsKitFile(name)) << name;
        EXPECT_THAT(bytes, Not(IsEmpty())) << name;
        files[name] = bytes;
    });
    EXPECT_EQ(names, kit.FileNames());
    EXPECT_EQ(files.size(), names.size()) << "no name twice";
    EXPECT_THAT(files["0001_set5.fnt"], HasSubstr("page id=0 file=\"0001_set5_0.png\"\n"));
    EXPECT_THAT(files["0001_set5.fnt"],
                HasSubstr("char id=65 x=1 y=1 width=8 height=8 xoffset=0 yoffset=894 xadvance=9 page=0 chnl=15\n"));
    EXPECT_TRUE(files.contains("0001_glyphs/065.png"));
}

TEST_F(Kit, WritesNamesWithQuotesAndMarksSoThatTheyCanBeRead) {
    files::FontFile font = BlockFont();
    font.header.font_name = "A \"B\" <C> & \xE9\x07";
    const fontkit::FontKit kit(ArtOf(font), "0001", {});
    kit.Write([&](const std::string& name, std::string_view bytes) {
        if (name == "0001_set0.fnt") {
            EXPECT_THAT(bytes, HasSubstr("face=\"A 'B' <C> & \xC3\xA9 \" size=20 "));
        }
        if (name == "0001_set0.xml") {
            EXPECT_THAT(bytes, HasSubstr("face=\"A 'B' &lt;C> &amp; \xC3\xA9 \" size=\"20\""));
        }
    });
}

}  // namespace

}  // namespace zel::test
