#include "host/trace.h"

#include <cstring>
#include <memory>
#include <sstream>

#include <gtest/gtest.h>

#include "base/crc32.h"
#include "host/glyph_bitmaps.h"
#include "module/contract/host_messages.h"
#include "module/contract/records/effpar.h"
#include "module/contract/records/tab_field.h"
#include "module/contract/zel_font.h"
#include "platform/framework/cstring.h"

namespace zel::test {

namespace {

class Trace : public testing::Test {
  protected:
    /// The lines written since the last call.
    std::string Lines() {
        std::string text = m_out.str();
        m_out.str("");
        return text;
    }
    template <typename Object>
    std::string Send(UINT message, host::Target target, WPARAM wParam, const Object* object, LRESULT answer = 0) {
        m_trace.OnSend({message, target, wParam, reinterpret_cast<LPARAM>(object), answer});
        return Lines();
    }
    std::string SendValue(UINT message, host::Target target, WPARAM wParam, LPARAM lParam, LRESULT answer = 0) {
        m_trace.OnSend({message, target, wParam, lParam, answer});
        return Lines();
    }

    std::ostringstream m_out;
    host::TraceWriter m_trace{m_out, host::TracePixels::kYes};
};

TEST_F(Trace, WritesABoxWithItsAnswer) {
    m_trace.OnBox({nullptr, "No \"\\x\"\n\xE9\x01", "Caption ", 48, 1});
    EXPECT_EQ(Lines(),
              "{\"event\":\"box\",\"text\":\"No \\\"\\\\x\\\"\\n\xC3\xA9\\u0001\",\"caption\":\"Caption \","
              "\"style\":48,\"answer\":1}\n");
}

TEST_F(Trace, WritesThePathOfAFileDialogOnlyWhenOneWasChosen) {
    m_trace.OnFileDialog({"Find", "\\d", ".0001", "", IDOK, "\\d\\.0002"});
    EXPECT_EQ(Lines(),
              "{\"event\":\"file_dialog\",\"title\":\"Find\",\"initial_dir\":\"\\\\d\",\"initial_name\":\".0001\","
              "\"answer\":1,\"path\":\"\\\\d\\\\.0002\"}\n");
    m_trace.OnFileDialog({"Find", "", "", "", IDCANCEL, ""});
    EXPECT_EQ(
        Lines(),
        "{\"event\":\"file_dialog\",\"title\":\"Find\",\"initial_dir\":\"\",\"initial_name\":\"\",\"answer\":2}\n");
}

TEST_F(Trace, WritesTheMessagesOfBatchAndExport) {
    const CString path("\\out");
    const BYTE state = 3;
    EXPECT_EQ(SendValue(kMsgRecord, host::Target::kHost, 0, 12),
              "{\"event\":\"send\",\"message\":1160,\"target\":\"host\",\"wParam\":0,\"id\":12}\n");
    EXPECT_EQ(
        Send(kMsgExportPlain, host::Target::kExport, 7, &path),
        "{\"event\":\"send\",\"message\":1190,\"target\":\"export\",\"wParam\":7,\"id\":7,\"path\":\"\\\\out\"}\n");
    EXPECT_EQ(SendValue(kMsgHasMessage, host::Target::kMain, 7, 0, 1),
              "{\"event\":\"send\",\"message\":1125,\"target\":\"main\",\"wParam\":7,\"id\":7,\"answer\":1}\n");
    EXPECT_EQ(Send(kMsgNuvoOut, host::Target::kHost, 1, &state),
              "{\"event\":\"send\",\"message\":1161,\"target\":\"host\",\"wParam\":1,\"state\":3}\n");
    EXPECT_EQ(SendValue(kMsgNuvoOut, host::Target::kHost, 2, 0),
              "{\"event\":\"send\",\"message\":1161,\"target\":\"host\",\"wParam\":2,\"state\":0}\n");
    EXPECT_EQ(SendValue(WM_PAINT, host::Target::kHost, 0, 0),
              "{\"event\":\"send\",\"message\":15,\"target\":\"host\",\"wParam\":0}\n");
}

TEST_F(Trace, WritesTabNamesUpToTheirEnd) {
    tag_tab_field tabs[2] = {{1, 2, 3, 4, 5, "Name", 6}, {65535, 0, 0, 0, 0, "", 0xFFFFFFFF}};
    std::memset(tabs[1].tab_name, 'x', sizeof tabs[1].tab_name);  // fills the field, so there is no NUL
    EXPECT_EQ(Send(kMsgTabs, host::Target::kHost, 2, tabs),
              "{\"event\":\"send\",\"message\":1158,\"target\":\"host\",\"wParam\":2,\"tabs\":["
              "{\"tab_start\":1,\"tab_end\":2,\"tab_top\":3,\"tab_bottom\":4,\"tab_byte\":5,\"tab_name\":\"Name\","
              "\"tab_bits\":6},"
              "{\"tab_start\":65535,\"tab_end\":0,\"tab_top\":0,\"tab_bottom\":0,\"tab_byte\":0,"
              "\"tab_name\":\"xxxxxxxxxxxxxxxxx\",\"tab_bits\":4294967295}]}\n");
}

/// A slot with a header, a description and effects of its own.
struct LoadedSlot {
    tag_font_header header{};
    LOGFONT log_font{};
    EFFPAR effect{};

    explicit LoadedSlot(tag_font_memory& slot) {
        std::strcpy(header.font_name, "Name");
        std::memcpy(header.font_id_text, "5020", 4);
        header.font_height = -1;
        header.row_top_offset = 2;
        header.row_inset = -3;
        header.edge_bits = 0x51;
        header.edge_size = 4;
        header.encoding_size = 4000000000U;
        header.font_flags = 0x20;
        log_font.lfHeight = -7;
        log_font.lfWeight = 700;
        log_font.lfItalic = 1;
        log_font.lfPitchAndFamily = 34;
        std::strcpy(log_font.lfFaceName, "Face");
        effect.face_colour = 0xFFFFFF;
        effect.effect_ratio = 0.75;
        effect.effect_const = 4;
        effect.edge_type = 1;
        effect.edge_on = 1;
        slot.font_header = &header;
        slot.log_font = &log_font;
        slot.effect_params = &effect;
        std::strcpy(slot.file_name, "\\f\\.0001");
    }
};

constexpr char kSlotJson[] =
    "{\"file_name\":\"\\\\f\\\\.0001\",\"font_name\":\"Name\",\"font_id_text\":\"5020\",\"font_height\":-1,\"row_top_"
    "offset\":2,"
    "\"row_inset\":-3,\"font_flags\":32,\"edge_type\":1,\"edge_direction\":5,\"edge_size\":4,\"encoding_size\":"
    "4000000000,"
    "\"log_font\":{\"lfHeight\":-7,\"lfWeight\":700,\"lfItalic\":1,\"lfPitchAndFamily\":34,\"lfFaceName\":\"Face\"},"
    "\"effect\":{\"face_colour\":16777215,\"effect_ratio\":0.75,\"effect_const\":4,\"edge_size\":0,\"edge_angle\":0,"
    "\"edge_type\":1,\"edge_colour\":0,\"edge_on\":1}}";

TEST_F(Trace, WritesTheFontSetWithNullForAnEmptySlot) {
    const auto fonts = std::make_unique<CZelFont>();
    const LoadedSlot loaded(fonts->m_Slots[1]);
    m_trace.OnFont(true, *fonts);
    std::string expected = "{\"event\":\"font\",\"result\":1,\"fonts\":[null,";
    expected += kSlotJson;
    for (int slot = 2; slot < 16; ++slot) expected += ",null";
    EXPECT_EQ(Lines(), expected + "]}\n");
}

TEST_F(Trace, WritesTheEntriesOfThePaletteWithoutItsTwoLeadingWords) {
    const auto fonts = std::make_unique<CZelFont>();
    for (std::uint32_t word = 0; word < 257; ++word) fonts->m_Palette[word] = word == 256 ? 0xFFFFFFFFU : word + 100;
    const std::string line = Send(kMsgFonts, host::Target::kHost, 0, fonts.get());
    EXPECT_NE(line.find("null],\"palette\":[101,102,"), std::string::npos) << line;
    EXPECT_NE(line.find(",355,4294967295]}\n"), std::string::npos) << line;
}

TEST_F(Trace, WritesEveryFieldOfACharacter) {
    LOGFONT font{};
    std::strcpy(font.lfFaceName, "Arial");
    tag_CharInf info{};
    info.log_font = &font;
    info.x = 1, info.y = 2, info.place_flag = 1, info.row_start = 1, info.row_index = 3, info.message_start = 1;
    info.left_margin = 4, info.base_shift = -5, info.row_top = 6, info.row_depth = 7, info.face_colour = 0xFFFFFF;
    info.effect_ratio = 0.75F, info.edge_type = 8, info.edge_angle = 135, info.edge_size = 9, info.edge_colour = 10;
    info.slot = 11, info.char_code = 0x1A5, info.colour_set = -1, info.glyph_metric = 12, info.glyph_height = 13;
    info.glyph_y = 14, info.glyph_step = -15, info.mf_flag = true;
    host::GlyphBitmaps glyphs;
    m_trace.OnChar({info, 0xA5, std::nullopt, glyphs});
    const std::string front =
        "{\"event\":\"char\",\"char\":165,\"log_font\":{\"lfHeight\":0,\"lfWeight\":0,\"lfItalic\":0,"
        "\"lfPitchAndFamily\":0,"
        "\"lfFaceName\":\"Arial\"},\"x\":1,\"y\":2,\"place_flag\":1,\"row_start\":1,\"row_index\":3,\"message_start\":"
        "1,"
        "\"left_margin\":4,\"base_shift\":-5,\"reserved_zero\":0,\"row_top\":6,\"row_depth\":7,\"face_colour\":"
        "16777215,"
        "\"effect_ratio\":0.75,\"edge_type\":8,\"edge_angle\":135,\"edge_size\":9,\"edge_colour\":10,\"font_copy\":";
    const std::string back =
        ",\"slot\":11,\"char_code\":421,\"colour_set\":-1,\"glyph_metric\":12,\"glyph_height\":13,\"glyph_y\":14,"
        "\"glyph_step\":-15,\"mf_flag\":1";
    EXPECT_EQ(Lines(), front + "null" + back + "}\n");
    m_trace.OnChar({info, 0xA5, 11, glyphs});
    EXPECT_EQ(Lines(), front + "11" + back + ",\"pixels\":{\"left\":0,\"top\":0,\"right\":0,\"bottom\":0}}\n");
}

TEST_F(Trace, EndsWithWhatIsKnown) {
    m_trace.OnEnd({host::Road::kImport, 3, ".0013", 20});
    EXPECT_EQ(Lines(), "{\"event\":\"end\",\"road\":\"import\",\"status\":3,\"next_id\":\".0013\",\"y_offset\":20}\n");
    m_trace.OnEnd({host::Road::kFont, std::nullopt, "", 0});
    EXPECT_EQ(Lines(), "{\"event\":\"end\",\"road\":\"font\",\"next_id\":\"\",\"y_offset\":0}\n");
    m_trace.OnException("cut short");
    EXPECT_EQ(Lines(), "{\"event\":\"exception\",\"text\":\"cut short\"}\n");
}

TEST(Crc32, IsTheUsualOne) {
    const char digits[] = "123456789";
    EXPECT_EQ(base::Crc32({reinterpret_cast<const std::uint8_t*>(digits), 9}), 0xCBF43926U);
    EXPECT_EQ(base::Crc32({}), 0U);
}

}  // namespace

}  // namespace zel::test
