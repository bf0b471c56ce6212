// The 16 slots: construction, release and the way back from a description.
#include <cstring>

#include <gtest/gtest.h>

#include "module/contract/records/effpar.h"
#include "module/translate/font_face.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::FontSet;

TEST(SlotStore, IndexesAre0To15) {
    CZelFont fonts;
    for (const auto& [index, valid] : {std::pair(-1, false), {0, true}, {15, true}, {16, false}, {INT_MIN, false}})
        EXPECT_EQ(fonts.IsValidFontIndex(index), valid) << index;
}

TEST(SlotStore, ReleasingTwiceIsFineAndLeavesTheCopy) {
    CZelFont fonts;
    tag_font_memory& slot = fonts.m_Slots[4];
    slot.font_header = new tag_font_header{};
    slot.log_font = new LOGFONT{};
    slot.effect_params = new EFFPAR{};
    slot.spare_block_a = new std::uint8_t(1);
    slot.encoding_data = static_cast<std::uint8_t*>(std::malloc(8));
    slot.sample_b.data = static_cast<std::uint8_t*>(std::malloc(8));
    tag_font_memory copy = slot;
    slot.font_copy = &copy;
    tag_font_memory empty;
    empty.font_copy = &copy;
    for (int round = 0; round < 2; ++round) {
        fonts.ReleaseFontData(&slot);
        EXPECT_EQ(std::memcmp(&slot, &empty, sizeof slot), 0);
    }
    fonts.ReleaseFontData(nullptr);
}

LOGFONT Described(const char* face, int height) {
    LOGFONT font;
    translate::InitLogFont(&font);
    std::memset(font.lfFaceName, 0, sizeof font.lfFaceName);
    std::strcpy(font.lfFaceName, face);
    font.lfHeight = height;
    return font;
}

struct FindCase {
    const char* name;
    const char* face;
    int height;
    int index;
    int height_after;
};

TEST(FindZelmaraFont, KnowsADescriptionByItselfOrByItsLegacyFace) {
    FontSet fonts;
    fonts.m_Slots[3].log_font = new LOGFONT(Described("Zelmara! (3) Name", 47));
    fonts.m_Slots[9].log_font = new LOGFONT(Described("Zelmara! (3) Name", 50));
    for (const FindCase& row : {
             FindCase{"an unknown face", "Arial", 30, -1, 30},
             FindCase{"an equal description", "Zelmara! (3) Name", 47, 3, 47},
             FindCase{"the first equal one, whatever its face says", "Zelmara! (3) Name", 50, 9, 50},
             FindCase{"the slot of the face", "Zelmara! (3) Name", 99, 3, 47},
             FindCase{"whatever follows the number", "Zelmara! (3", 99, 3, 47},
             FindCase{"no blank", "Zelmara!(3) X", 99, 3, 47},
             FindCase{"several blanks", "Zelmara!   (3) X", 99, 3, 47},
             FindCase{"a tab", "Zelmara!\t(3) X", 99, 3, 47},
             FindCase{"blanks before the number", "Zelmara! (  3) X", 99, 3, 47},
             FindCase{"a blank inside the word", "Zelmara ! (3) X", 99, -1, 99},
             FindCase{"no parenthesis", "Zelmara! 3) X", 99, -1, 99},
             FindCase{"only blanks", "Zelmara!          ", 99, -1, 99},
             FindCase{"case counts", "zelmara! (3) Name", 99, -1, 99},
             FindCase{"a number that is no slot", "Zelmara! (20) X", 99, 20, 99},
             FindCase{"a negative number", "Zelmara! (-4) X", 99, -4, 99},
             FindCase{"an empty slot", "Zelmara! (5) X", 99, 5, 99},
             FindCase{"no number", "Zelmara! (x) X", 99, -1, 99},
         }) {
        LOGFONT font = Described(row.face, row.height);
        EXPECT_EQ(fonts.FindZelmaraFont(font), row.index) << row.name;
        EXPECT_EQ(font.lfHeight, row.height_after) << row.name;
    }
    LOGFONT other = Described("Zelmara! (3) Name", 50);
    other.lfQuality = 5;
    EXPECT_EQ(fonts.FindZelmaraFont(other), 3) << "every field before the face counts";
}

TEST(IsZelmaraFont, UsesTheFirstSevenCharacters) {
    for (const auto& [face, legacy] :
         {std::pair("Zelmara", true), {"Zelmara! (3) Name", true}, {"zelmara", false}, {"Zelmar", false}}) {
        LOGFONT font = Described(face, 1);
        EXPECT_EQ(IsZelmaraFont(font), legacy) << face;
    }
}

}  // namespace

}  // namespace zel::test
