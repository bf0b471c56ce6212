#include "host/picture/text_renderer.h"

#include <cstring>

#include <gtest/gtest.h>

#include "module/contract/records/edge.h"

namespace zel::test {

namespace {

class Renderer : public testing::Test {
  protected:
    Renderer() {
        std::strcpy(m_font.lfFaceName, "DejaVu Sans");
        m_font.lfHeight = -2000;
        m_info.edge_type = static_cast<int>(EdgeType::kShadow);
        m_info.edge_angle = 135;
        m_info.edge_size = 255;
    }
    const picture::TextGlyph* Get(unsigned character) { return m_renderer.Get(m_font, m_info, character); }

    picture::TextRenderer m_renderer;
    LOGFONT m_font{};
    tag_CharInf m_info{};
};

TEST_F(Renderer, StopsAtTheLimitOfAMessage) {
    m_renderer.BeginMessage();
    unsigned drawn = 'A';
    for (; drawn <= 'Z' && !m_renderer.IsExhausted(); ++drawn) ASSERT_NE(Get(drawn), nullptr);
    EXPECT_LT(drawn, unsigned{'K'});
    EXPECT_EQ(Get('Z'), nullptr);
    EXPECT_NE(Get('A'), nullptr) << "cached";
    m_renderer.BeginMessage();
    EXPECT_NE(Get('Z'), nullptr);
}

}  // namespace

}  // namespace zel::test
