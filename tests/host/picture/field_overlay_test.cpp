#include "host/picture/field_overlay.h"

#include <string_view>

#include <gtest/gtest.h>

namespace zel::test {

namespace {

class FieldOverlay : public testing::Test {
  protected:
    FieldOverlay() : m_picture(picture::ClearPicture(720, 486)) {}

    void Add(int left, int top, int right, int bottom, const char* name) {
        tag_tab_field tab{};
        tab.tab_start = static_cast<std::uint16_t>(left);
        tab.tab_top = static_cast<std::uint16_t>(top);
        tab.tab_end = static_cast<std::uint16_t>(right);
        tab.tab_bottom = static_cast<std::uint16_t>(bottom);
        std::string_view(name).copy(tab.tab_name, kTabNameSize);
        m_message.tabs.push_back(tab);
    }
    void Draw() { picture::DrawTabFields(m_picture, m_message); }
    picture::Rgba At(int x, int y) const { return m_picture.View().Row(y)[static_cast<std::size_t>(x)]; }
    bool IsDrawn(int x, int y) const { return At(x, y).alpha != 0; }

    picture::Picture m_picture;
    document::MessageRecord m_message;
};

TEST_F(FieldOverlay, FramesAreOnTheEdgesOfTheFieldsAndEmptyInside) {
    Add(100, 200, 300, 240, "NAME");
    Draw();
    for (const auto& [x, y] : {std::pair(100, 200), {299, 200}, {100, 239}, {299, 239}, {200, 200}, {100, 220}}) {
        EXPECT_EQ(At(x, y), (picture::Rgba{0, 216, 255, 255})) << x << ", " << y;
    }
    for (const auto& [x, y] : {std::pair(99, 220), {300, 220}, {200, 240}, {101, 201}, {298, 238}}) {
        EXPECT_FALSE(IsDrawn(x, y)) << x << ", " << y;
    }
}

TEST_F(FieldOverlay, LabelsAreAboveAndNeverOverlap) {
    Add(100, 200, 300, 240, "NAME");  // four characters: a plate of 33 pixels
    Add(100, 200, 500, 240, "");      // its number takes the place of a name: 12 pixels
    Draw();
    EXPECT_TRUE(IsDrawn(132, 186));
    EXPECT_FALSE(IsDrawn(133, 186));
    EXPECT_TRUE(IsDrawn(135, 186));
    EXPECT_TRUE(IsDrawn(146, 186));
    EXPECT_FALSE(IsDrawn(147, 186));
}

TEST_F(FieldOverlay, IsClippedToThePicture) {
    Add(700, 480, 1030, 2046, "LOW");
    Add(65535, 65535, 7, 0, "WRAPPED");
    Add(0, 0, 60, 4, "A NAME OF 17 CHARS");
    Draw();
    EXPECT_EQ(At(719, 480), (picture::Rgba{0, 216, 255, 255}));
    EXPECT_TRUE(IsDrawn(1, 12)) << "the label is inside the frame where there is no space above it";
}

}  // namespace

}  // namespace zel::test
