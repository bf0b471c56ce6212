// Rectangles and pixels of characters, as a host requests them.
#include <gmock/gmock.h>

#include "module/font/format/straighten.h"
#include "support/file_error.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using files::ColourRun;
using files::EndOfLine;
using module_test::ExpectFileError;
using module_test::FontSet;
using module_test::ModuleTest;
using module_test::PlainFont;
using module_test::SolidGlyph;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;

TEST(StoredPixels, AreTheFormulaInDoublesForEveryColourAndAlphaOnEveryPath) {
    std::vector<std::uint8_t> stored, wanted;
    for (unsigned alpha = 0; alpha < 256; ++alpha) {
        for (unsigned c = 0; c < 256; ++c) {
            for (const unsigned byte : {alpha, c, 255 - c, 0U}) stored.push_back(static_cast<std::uint8_t>(byte));
            for (const unsigned colour : {c, 255 - c, 0U})
                wanted.push_back(alpha == 0 ? 0
                                            : static_cast<std::uint8_t>(std::min(colour, alpha) * 255.0 / alpha + 0.5));
            wanted.push_back(static_cast<std::uint8_t>(alpha));
        }
    }
    for (const font::straighten::Path& path : font::straighten::Paths()) {
        for (const std::size_t first : {0U, 4U}) {  // the second leaves a remainder after the last whole step
            std::vector<std::uint8_t> pixels(stored.begin() + static_cast<std::ptrdiff_t>(first), stored.end());
            path.Convert(pixels.data(), pixels.data(), pixels.size() / 4);
            EXPECT_TRUE(std::equal(pixels.begin(), pixels.end(), wanted.begin() + static_cast<std::ptrdiff_t>(first)))
                << path.name;
        }
    }
}

TEST(StoredPixels, OfRowsOfAnyWidthAreTheSameOnEveryPath) {
    std::vector<std::uint8_t> stored(4 * 3 * 20);
    for (std::size_t i = 0; i < stored.size(); ++i) stored[i] = static_cast<std::uint8_t>(i * 167 >> 1);
    for (std::size_t width = 1; width <= 20; ++width) {
        const auto row = static_cast<std::ptrdiff_t>(width) * 4;
        const auto converted = [&](const font::straighten::Path& path) {
            std::vector<std::uint8_t> pixels(stored.size(), 0xEE);
            path.convert_rows({stored.data() + 2 * row, -row, pixels.data(), width, 3});  // the last row first
            return pixels;
        };
        const auto wanted = converted(font::straighten::Paths().back());
        for (const font::straighten::Path& path : font::straighten::Paths())
            EXPECT_EQ(converted(path), wanted) << path.name << ", " << width;
    }
}

/// A bitmap of the host. Every byte is initially 0x77.
struct Bitmap {
    Bitmap(int width, int height) : bytes(static_cast<std::size_t>(width * height * 4), 0x77) {
        dib.dsBm.bmBits = bytes.data();
        dib.dsBmih.biWidth = width;
        dib.dsBmih.biHeight = height;
    }
    /// A pixel; row 0 is the top one.
    std::vector<int> At(int x, int y) const {
        const auto* at = bytes.data() + ((dib.dsBmih.biHeight - 1 - y) * dib.dsBmih.biWidth + x) * 4;
        return {at, at + 4};
    }
    std::vector<std::uint8_t> bytes;
    DIBSECTION dib{};
};

class Glyphs : public ModuleTest {
  protected:
    void Load(const files::FontFile& font) {
        WriteFont(1, font);
        CString path("D:\\MACHINE");
        ASSERT_EQ(fonts.ReadFont(path, 1, 0, false), 1);
    }
    CRect Rect(DWORD code, bool* flag = nullptr) { return fonts.GetMFRect(Font(), 0, code, top, flag); }
    FontAddress Font() const { return reinterpret_cast<FontAddress>(fonts.m_Slots[0].font_copy); }
    Bitmap Build(DWORD code, int palette_set = -1) {
        const CRect rect = Rect(code);
        Bitmap bitmap(rect.right, rect.bottom);
        fonts.BuildMFData(Font(), &bitmap.dib, 0, code, palette_set);
        return bitmap;
    }
    /// Whether nothing is drawn.
    bool LeavesBitmap(DWORD code) {
        Bitmap bitmap(4, 4);
        fonts.BuildMFData(Font(), &bitmap.dib, 0, code, 0);
        return bitmap.bytes == Bitmap(4, 4).bytes;
    }

    FontSet fonts;
    int top = -99;
};

constexpr char kNotFound[] = "Couldn't Find Font File |Couldn't Find Zelmara! Font File: D:\\MACHINE\\.0001";

TEST_F(Glyphs, RectanglesOfEachKind) {
    files::FontFile font = PlainFont("Plain", "A");
    font.AddStored('S', SolidGlyph(40, 30), 77, 0);
    font.AddStored('F', SolidGlyph(1, 1, 0x8000), 0, 0);
    font.AddStored('N', SolidGlyph(1, 1), 0, 0);
    font.stored['N'].width_word = 0;
    font.stored['N'].height_word = 0x8000;
    font.directory['0'] = {.glyph_kind = 0x80, .glyph_top = 9};
    Load(font);
    bool flag = true;
    EXPECT_EQ(Rect('A', &flag), CRect(0, 0, 4, 4));
    EXPECT_EQ(top, 10);
    EXPECT_TRUE(flag) << "a run-coded glyph doesn't write it";
    top = -99;
    EXPECT_EQ(Rect('S', &flag), CRect(0, 0, 40, 30));
    EXPECT_FALSE(flag);
    EXPECT_EQ(Rect('F', &flag), CRect(0, 0, 1, 1));
    EXPECT_TRUE(flag);
    EXPECT_EQ(top, -99) << "a stored glyph doesn't write it";
    for (const DWORD code : {DWORD{'0'}, DWORD{192}, DWORD{255}, DWORD{0xFFFFFFFF}}) {
        EXPECT_EQ(Rect(code, &flag), CRect(0, 0, 0, 0)) << code;
        EXPECT_TRUE(LeavesBitmap(code)) << code;
    }
    EXPECT_TRUE(flag);
    EXPECT_EQ(Rect('N'), CRect(0, 0, -1, -32768)) << "signed 16-bit numbers";
    EXPECT_TRUE(LeavesBitmap('N'));
    EXPECT_EQ(fonts.GetMFRect(0, 0, 'S', top, &flag), CRect(0, 0, 0, 0)) << "no font";
    Bitmap bitmap(4, 4);
    fonts.BuildMFData(0, &bitmap.dib, 0, 'A', 0);
    EXPECT_THAT(bitmap.bytes, Each(0x77));
    EXPECT_TRUE(flag);
    EXPECT_EQ(top, -99);
}

TEST_F(Glyphs, RunCodedWithoutEncodingDataIsEmpty) {
    files::FontFile font = PlainFont("Plain", "A");
    font.header.font_flags = 0;
    Load(font);
    EXPECT_EQ(Rect('A'), CRect(0, 0, 0, 0));
    EXPECT_TRUE(LeavesBitmap('A'));
}

TEST_F(Glyphs, RunCodedIsDrawnBottomUpInTheColoursOfItsSet) {
    Load(PlainFont("Plain", "A"));
    fonts.m_Palette[1 + 32 * 7 + 1] = 0x2233FF11;  // green, blue, unread, red
    fonts.m_Palette[1 + 32 * 7 + 2] = 0x5566FF44;
    fonts.m_EdgeColor = 0x030201;
    fonts.m_BackColor = 0x990000;
    const Bitmap set7 = Build('A', 7);
    EXPECT_THAT(set7.At(0, 0), Each(0x99)) << "the blank first row holds the background's blue";
    EXPECT_THAT(set7.At(3, 3), Each(0x99));
    EXPECT_THAT(set7.At(3, 1), ElementsAre(0x33, 0x22, 0x11, 255));
    EXPECT_THAT(set7.At(2, 2), ElementsAre(0x66, 0x55, 0x44, 255));
    EXPECT_THAT(set7.At(3, 2), Each(0)) << "after the end of the line";
    for (const int no_set : {-1, 8, 1000, -5}) {
        const Bitmap plain = Build('A', no_set);
        EXPECT_THAT(plain.At(0, 1), Each(255)) << no_set;
        EXPECT_THAT(plain.At(0, 2), ElementsAre(3, 2, 1, 255)) << no_set;
    }
}

TEST_F(Glyphs, EmptyRunCodedGlyphIsTheFill) {
    files::FontFile font = PlainFont("Plain", "A");
    font.AddRunCoded('E', {files::EndOfGlyph()}, 3, 0);
    Load(font);
    EXPECT_EQ(Rect('E'), CRect(0, 0, 0, 2));
    EXPECT_EQ(top, 3);
    fonts.m_BackColor = 0x420000;
    Bitmap bitmap(4, 2);
    fonts.BuildMFTagData(Font(), &bitmap.dib, 0, 'E', -1);
    EXPECT_THAT(bitmap.bytes, Each(0x42));
}

TEST_F(Glyphs, StoredIsStraightenedAndFlipped) {
    files::StoredGlyph glyph = SolidGlyph(2, 2);
    glyph.pixels = {128, 128, 64, 200, 255, 1, 2, 3, 0, 9, 9, 9, 255, 4, 5, 6};
    files::FontFile font = PlainFont();
    font.AddStored('S', glyph, 0, 0);
    Load(font);
    const Bitmap bitmap = Build('S');
    EXPECT_THAT(bitmap.At(0, 0), ElementsAre(255, 128, 255, 128));
    EXPECT_THAT(bitmap.At(1, 0), ElementsAre(1, 2, 3, 255));
    EXPECT_THAT(bitmap.At(0, 1), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(bitmap.At(1, 1), ElementsAre(4, 5, 6, 255));
}

TEST_F(Glyphs, StoredPixelsStayInsideBothBlocks) {
    files::FontFile font = PlainFont();
    for (const unsigned code : {unsigned{'B'}, unsigned{'S'}, unsigned{'Z'}})
        font.AddStored(code, SolidGlyph(4, 4), 0, 0);
    font.stored['S'].pixels.resize(30);  // too few for its rows
    font.stored['Z'].length = 3;         // not even a head
    Load(font);
    Bitmap small(3, 3);
    fonts.BuildMFData(Font(), &small.dib, 0, 'B', 0);
    EXPECT_THAT(std::vector<int>(small.bytes.begin(), small.bytes.begin() + 4), ElementsAre(10, 20, 30, 255));
    EXPECT_THAT(std::vector<int>(small.bytes.begin() + 32, small.bytes.end()), Each(0x77)) << "a row that doesn't fit";
    const Bitmap cut = Build('S');
    EXPECT_THAT(cut.At(3, 0), ElementsAre(10, 20, 30, 255));
    EXPECT_THAT(cut.At(0, 2), Each(0x77));
    EXPECT_TRUE(LeavesBitmap('Z'));
    DIBSECTION null{};
    fonts.BuildMFData(Font(), &null, 0, 'B', 0);
}

TEST_F(Glyphs, MissingFileShowsOneBoxForEachCallUnlessSkipped) {
    files::FontFile font = PlainFont();
    font.AddStored('S', SolidGlyph(2, 2), 0, 0);
    Load(font);
    std::filesystem::remove(Native("MACHINE/.0001"));
    for (const bool skip : {false, true}) {
        CZelFont::m_bIgnoreErrors = skip ? 1 : 0;
        const std::vector<std::string> boxes(skip ? 0 : 1, kNotFound);
        EXPECT_EQ(Rect('S'), CRect(0, 0, 0, 0));
        EXPECT_EQ(NewBoxes(), boxes);
        EXPECT_TRUE(LeavesBitmap('S'));
        EXPECT_EQ(NewBoxes(), boxes);
    }
    EXPECT_EQ(desktop.Boxes()[0].style, 48U);
}

TEST_F(Glyphs, RecordCutShortIsAFileError) {
    files::FontFile font = PlainFont();
    font.AddStored('S', SolidGlyph(2, 2, 0x8000), 0, 0);
    Load(font);
    files::FontOffsets at;
    const files::Bytes bytes = files::WriteFont(font, &at);
    for (std::size_t n = at.stored['S']; n < bytes.size(); ++n) {
        WriteFile("MACHINE/.0001", std::span(bytes).first(n));
        SCOPED_TRACE(n - at.stored['S']);
        bool flag = false;
        if (n < at.stored['S'] + 12) {
            ExpectFileError("D:\\MACHINE\\.0001", [&] { Rect('S', &flag); });
            EXPECT_EQ(flag, n >= at.stored['S'] + 6) << "set if the file contains its word";
        }
        Bitmap bitmap(2, 2);
        ExpectFileError("D:\\MACHINE\\.0001", [&] { fonts.BuildMFData(Font(), &bitmap.dib, 0, 'S', 0); });
        EXPECT_THAT(bitmap.bytes, Each(0x77));
    }
}

}  // namespace

}  // namespace zel::test
