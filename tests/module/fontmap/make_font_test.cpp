// One font for the host, without a message around it.
#include <cstring>

#include <gmock/gmock.h>

#include "module/contract/records/effpar.h"
#include "module/contract/zel_trans_export.h"
#include "module/font/format/font_blocks.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::FontSet;
using module_test::ModuleTest;
using module_test::PlainFont;
using testing::ElementsAre;

class MakeFont : public ModuleTest {
  protected:
    bool Make(std::string path) { return CZelTransExport().MakeTavroFont(path.data(), &fonts); }
    FontSet fonts;
};

TEST_F(MakeFont, SplitsThePath) {
    CZelFont::m_bIgnoreErrors = 0;
    for (const auto& [path, wanted] : {
             std::pair("D:\\F\\.0012", "D:\\F\\.0012"),
             {"D:\\F\\.12", "D:\\F\\.0012"},
             {"D:\\F\\.70000", "D:\\F\\.70000"},
             {"D:\\F", "D:\\F\\.0000"},        // no extension: the whole path is the directory
             {"D:\\F\\.TXT", "D:\\F\\.0000"},  // not a number
             {"D:\\F\\.12a", "D:\\F\\.0000"},  // not a number as a whole
             {"D:\\F\\.", "D:\\F\\.0000"},
             {"D:\\F\\STEM.0012", "D:\\F\\STE\\.0012"},  // the cut takes the stem's last character
             {"D:\\A.0012\\F\\.0012", "D:\\.0012"},      // and is made at the first occurrence
             {".0012", ".0012"},
             {"", ".0000"},
         }) {
        EXPECT_FALSE(Make(path)) << path;
        const std::vector<std::string> boxes = NewBoxes();
        EXPECT_EQ(boxes.back(), "Couldn't Find Font File |Couldn't Find Zelmara! Font File: " + std::string(wanted) +
                                    "\nWould you like to browse for this file?");
    }
}

TEST_F(MakeFont, FilledSlotHasADescriptionWithoutMaps) {
    WriteFile("MAPS/bitstream_fontlist.txt", "\n\nName\t1\n");
    WriteFile("MAPS/typeface_list.txt", "\n\nMapped\tName BT\n");
    WriteFont(12, PlainFont("Name Bold Italic X", ""));
    fonts.m_Palette[1 + 7 * 32 + 1] = 0x22330011;
    ASSERT_TRUE(Make("D:\\MACHINE\\.0012"));
    EXPECT_STREQ(fonts.m_Slots[0].log_font->lfFaceName, "Zelmara! (0) Name Bold Ital");
    EXPECT_EQ(fonts.m_Slots[0].log_font->lfWeight, 700);
    EXPECT_EQ(fonts.m_Slots[0].log_font->lfItalic, 1);
    EXPECT_EQ(fonts.m_Slots[0].effect_params->face_colour, 0x332211U) << "from the palette that the set had before";
    EXPECT_EQ(fonts.m_Palette[1 + 7 * 32 + 1], 0xD9D9FFD9U) << "the default palette from now on";
}

TEST_F(MakeFont, CancelStillCopiesThePalette) {
    desktop.SetYesNoAnswer(IDCANCEL);
    EXPECT_FALSE(Make("D:\\MACHINE\\.0012"));
    EXPECT_EQ(fonts.m_Palette[1], 0x0000FE00U);
    EXPECT_TRUE(CZelFont::m_bCancelFontBrowse);
    EXPECT_FALSE(Make("D:\\MACHINE\\.0012"));
    EXPECT_EQ(desktop.Boxes().size(), 3U) << "no second prompt; each call shows a box for the typeface list";
}

TEST_F(MakeFont, FailureClearsTheSlotAndKeepsThePaletteAndTheEarlierFont) {
    WriteFont(12, PlainFont());
    WriteFile("MACHINE/.0014", "too short");
    ASSERT_TRUE(Make("D:\\MACHINE\\.0012"));
    tag_font_memory held = fonts.m_Slots[0];
    fonts.m_Palette[5] = 77;
    CZelFont::m_bIgnoreErrors = 1;
    for (const char* failing : {"D:\\MACHINE\\.0013", "D:\\MACHINE\\.0014"}) {
        EXPECT_FALSE(Make(failing));
        EXPECT_EQ(held.font_header->font_height, 40) << "not freed";
    }
    EXPECT_EQ(fonts.m_Slots[0].font_header, nullptr);
    EXPECT_EQ(fonts.m_Slots[0].font_copy, nullptr);
    EXPECT_EQ(fonts.m_Palette[5], 77U);
    delete held.font_copy;
    font::ReleaseFontBlocks(held);
}

}  // namespace

}  // namespace zel::test
