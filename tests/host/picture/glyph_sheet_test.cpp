#include "host/picture/glyph_sheet.h"

#include <array>

#include <gtest/gtest.h>

#include "host/host_disk.h"
#include "host/run/font_run.h"
#include "module/contract/zel_font.h"

namespace zel::test {

namespace {

using Colour = std::vector<int>;

class Sheet : public HostDisk {
  protected:
    /// @param size  bytes of the file that are written.
    picture::GlyphSheet SheetOf(const files::Bytes& file, std::size_t size) {
        samples::WriteWholeFile(Path("MACHINE/.0001"), std::span(file).first(size));
        run::FontRunRequest request;
        request.file = Path("MACHINE/.0001");
        picture::GlyphSheet sheet;
        const run::FontRunOutcome outcome =
            run::RunFont(request, {}, [&sheet](CZelFont& fonts) { sheet = picture::DrawGlyphSheet(fonts); });
        EXPECT_TRUE(outcome.Done()) << outcome.failure;
        return sheet;
    }
    picture::GlyphSheet SheetOf(const files::FontFile& font) {
        const files::Bytes file = files::WriteFont(font);
        return SheetOf(file, file.size());
    }

    /// Colour of a pixel of a code's cell, in a sheet with one row.
    static Colour At(const picture::GlyphSheet& sheet, int code, int x, int y) {
        const int step_x = (sheet.picture.width - 4) / 16;
        const int column = 4 + code % 16 * step_x + x, row = 4 + 14 + y;
        const auto at = static_cast<std::size_t>(row * sheet.picture.width + column) * 4;
        const auto& rgba = sheet.picture.rgba;
        return {rgba.at(at), rgba.at(at + 1), rgba.at(at + 2), rgba.at(at + 3)};
    }
};

const Colour kFace{0xD9, 0xD9, 0xD9, 255}, kCheck{66, 70, 78, 255}, kPlain{42, 46, 54, 255}, kBroken{170, 40, 40, 255};

TEST_F(Sheet, ShowsARunCodedGlyphInTheLastColourSetOnItsCheckerboard) {
    const picture::GlyphSheet sheet = SheetOf(BlockFont());
    EXPECT_EQ(sheet.glyphs, 3);
    EXPECT_EQ(sheet.picture.width, 4 + 16 * (14 + 4));
    EXPECT_EQ(At(sheet, 'A', 0, 1), kFace);
    EXPECT_EQ(At(sheet, 'C', 3, 2), kFace);
    EXPECT_EQ(At(sheet, 'C', 4, 2), kPlain);
    EXPECT_EQ(At(sheet, 'D', 0, 1), kPlain);
    for (std::size_t alpha = 3; alpha < sheet.picture.rgba.size(); alpha += 4) {
        ASSERT_EQ(sheet.picture.rgba[alpha], 255);
    }
}

TEST_F(Sheet, AlignsGlyphsOnTheBaselineAndLeavesOutEmptyRows) {
    files::FontFile font;
    const auto add = [&font](unsigned code, unsigned height, unsigned top) {
        font.AddStored(code, {.width = 2, .height = height, .pixels = files::Bytes(height * 8, 255)}, top, 2);
    };
    add('A', 6, 6);
    add('C', 2, 6);
    add('D', 2, 2);
    add('G', 8, 6);
    const picture::GlyphSheet sheet = SheetOf(font);
    const Colour white{255, 255, 255, 255};
    for (const auto& [code, top, height] : {std::array<int, 3>{'A', 0, 6}, {'C', 0, 2}, {'D', 4, 2}, {'G', 0, 8}}) {
        EXPECT_EQ(At(sheet, code, 0, top), white) << code;
        EXPECT_EQ(At(sheet, code, 0, top + height - 1), white) << code;
        EXPECT_NE(At(sheet, code, 0, top + height), white) << code;
        if (top != 0) {
            EXPECT_EQ(At(sheet, code, 0, top - 1), kPlain) << code;
        }
    }
    EXPECT_EQ(sheet.picture.height, 4 + 1 * (14 + 14 + 4));
    add(' ', 2, 900);
    const picture::GlyphSheet far = SheetOf(font);
    EXPECT_EQ(far.picture.height, 4 + 2 * (14 + 14 + 4)) << "too far above the baseline";
}

TEST_F(Sheet, MarksAGlyphWithAnIncompleteRecordAndContinues) {
    files::FontFile font = StoredFont();
    font.AddStored('B', {.width = 2, .height = 2, .pixels = files::Bytes(16, 0)}, 2, 2);
    const files::Bytes file = files::WriteFont(font);
    const picture::GlyphSheet sheet = SheetOf(file, file.size() - 4);
    EXPECT_EQ(sheet.glyphs, 1);
    ASSERT_EQ(sheet.failures.size(), 1U);
    EXPECT_EQ(At(sheet, 'A', 1, 1), (Colour{255, 0, 0, 255}));
    EXPECT_EQ(At(sheet, 'B', 5, 5), kBroken);
}

TEST_F(Sheet, CutsAGlyphThatIsLargerThanACell) {
    files::FontFile font;
    files::Bytes pixels(300 * 2 * 4, 0);
    for (std::size_t byte = 300 * 4; byte < pixels.size(); ++byte)
        pixels[byte] = 255;  // the lower row white, the upper transparent
    font.AddStored('A', {.width = 300, .height = 2, .pixels = pixels}, 2, 2);
    const picture::GlyphSheet sheet = SheetOf(font);
    EXPECT_EQ(sheet.cut, 1);
    EXPECT_EQ(sheet.picture.width, 4 + 16 * (picture::kLargestGlyphCell + 4));
    EXPECT_EQ(At(sheet, 'A', 0, 0), kCheck);
    EXPECT_EQ(At(sheet, 'A', 255, 1), (Colour{255, 255, 255, 255}));
}

}  // namespace

}  // namespace zel::test
