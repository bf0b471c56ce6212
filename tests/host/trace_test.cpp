#include "host/trace.h"

#include <cstring>
#include <memory>
#include <sstream>

#include <gtest/gtest.h>

#include "host/glyph_bitmaps.h"
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
    std::string Send(const host::HostEvent& event, WPARAM wParam = 0, LRESULT answer = 0) {
        m_trace.OnSend({event, ContractTargetOf(event), wParam, answer});
        return Lines();
    }

    std::ostringstream m_out;
    host::TraceWriter m_trace{m_out, host::TracePixels::kYes};
};

TEST_F(Trace, WritesABoxWithItsAnswer) {
    m_trace.OnBox({nullptr, "No \"\\x\"\n\xE9\x01", "Caption ", 48, 1});
    EXPECT_EQ(Lines(), R"({"event":"box","text":"No \"\\x\"\né\u0001","caption":"Caption ","style":48,"answer":1})"
                       "\n");
}

TEST_F(Trace, WritesThePathOfAFileDialogOnlyWhenOneWasChosen) {
    m_trace.OnFileDialog({"Find", "\\d", ".0001", "", IDOK, "\\d\\.0002"});
    m_trace.OnFileDialog({"Find", "", "", "", IDCANCEL, ""});
    EXPECT_EQ(Lines(), R"({"event":"file_dialog","title":"Find","initial_dir":"\\d","initial_name":".0001","answer":1,)"
                       R"("path":"\\d\\.0002"})"
                       "\n"
                       R"({"event":"file_dialog","title":"Find","initial_dir":"","initial_name":"","answer":2})"
                       "\n");
}

TEST_F(Trace, WritesTheMessagesOfBatchAndExport) {
    const CString path("\\out");
    BYTE state = 3;
    const struct {
        std::string written;
        const char* expected;
    } rows[] = {
        {Send(host::RecordMessage{12}), R"("message":1160,"target":"host","wParam":0,"id":12})"},
        {Send(host::ExportFlagged{7, path}, 7), R"("message":1168,"target":"host","wParam":7,"id":7,"path":"\\out"})"},
        {Send(host::ExportPlain{7, path}, 7), R"("message":1190,"target":"export","wParam":7,"id":7,"path":"\\out"})"},
        {Send(host::HasMessage{7}, 7, 1), R"("message":1125,"target":"main","wParam":7,"id":7,"answer":1})"},
        {Send(host::NuvoFetch{state}, 1), R"("message":1161,"target":"host","wParam":1,"state":3})"},
        {Send(host::NuvoSet{-4}, 2), R"("message":1161,"target":"host","wParam":2,"state":-4})"},
        {Send(host::Paint{}, ~WPARAM{0}), sizeof(WPARAM) == 8
                                              ? R"("message":15,"target":"host","wParam":18446744073709551615})"
                                              : R"("message":15,"target":"host","wParam":4294967295})"},
    };
    for (const auto& row : rows) EXPECT_EQ(row.written, std::string(R"({"event":"send",)") + row.expected + "\n");
}

TEST_F(Trace, WritesTabNamesUpToTheirEnd) {
    tag_tab_field tabs[2] = {{1, 2, 3, 4, 5, "Name", 6}, {65535, 0, 0, 0, 0, "", 0xFFFFFFFF}};
    std::memset(tabs[1].tab_name, 'x', sizeof tabs[1].tab_name);  // fills the field, so there is no NUL
    EXPECT_EQ(Send(host::TabsReady{tabs}, 2),
              R"({"event":"send","message":1158,"target":"host","wParam":2,"tabs":[)"
              R"({"tab_start":1,"tab_end":2,"tab_top":3,"tab_bottom":4,"tab_byte":5,"tab_name":"Name","tab_bits":6},)"
              R"({"tab_start":65535,"tab_end":0,"tab_top":0,"tab_bottom":0,"tab_byte":0,)"
              R"("tab_name":"xxxxxxxxxxxxxxxxx","tab_bits":4294967295}]})"
              "\n");
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
    R"({"file_name":"\\f\\.0001","font_name":"Name","font_id_text":"5020","font_height":-1,"row_top_offset":2,)"
    R"("row_inset":-3,"font_flags":32,"edge_type":1,"edge_direction":5,"edge_size":4,"encoding_size":4000000000,)"
    R"("log_font":{"lfHeight":-7,"lfWeight":700,"lfItalic":1,"lfPitchAndFamily":34,"lfFaceName":"Face"},)"
    R"("effect":{"face_colour":16777215,"effect_ratio":0.75,"effect_const":4,"edge_size":0,"edge_angle":0,)"
    R"("edge_type":1,"edge_colour":0,"edge_on":1}})";

TEST_F(Trace, WritesTheFontSetWithNullForAnEmptySlot) {
    const auto fonts = std::make_unique<CZelFont>();
    const LoadedSlot loaded(fonts->m_Slots[1]);
    m_trace.OnFont(true, *fonts);
    std::string expected = R"({"event":"font","result":1,"fonts":[null,)";
    expected += kSlotJson;
    for (int slot = 2; slot < 16; ++slot) expected += ",null";
    EXPECT_EQ(Lines(), expected + "]}\n");
}

TEST_F(Trace, WritesTheEntriesOfThePaletteWithoutItsTwoLeadingWords) {
    const auto fonts = std::make_unique<CZelFont>();
    for (std::uint32_t word = 0; word < 257; ++word) fonts->m_Palette[word] = word == 256 ? 0xFFFFFFFFU : word + 100;
    const std::string line = Send(host::FontsReady{*fonts});
    EXPECT_NE(line.find(R"(null],"palette":[101,102,)"), std::string::npos) << line;
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
        R"({"event":"char","char":165,"log_font":{"lfHeight":0,"lfWeight":0,"lfItalic":0,"lfPitchAndFamily":0,)"
        R"("lfFaceName":"Arial"},"x":1,"y":2,"place_flag":1,"row_start":1,"row_index":3,"message_start":1,)"
        R"("left_margin":4,"base_shift":-5,"reserved_zero":0,"row_top":6,"row_depth":7,"face_colour":16777215,)"
        R"("effect_ratio":0.75,"edge_type":8,"edge_angle":135,"edge_size":9,"edge_colour":10,"font_copy":)";
    const std::string back =
        R"(,"slot":11,"char_code":421,"colour_set":-1,"glyph_metric":12,"glyph_height":13,"glyph_y":14,)"
        R"("glyph_step":-15,"mf_flag":1)";
    EXPECT_EQ(Lines(), front + "null" + back + "}\n");
    m_trace.OnChar({info, 0xA5, 11, glyphs});
    EXPECT_EQ(Lines(), front + "11" + back + R"(,"pixels":{"left":0,"top":0,"right":0,"bottom":0}})" + "\n");
}

TEST_F(Trace, WritesTheEndOfARun) {
    m_trace.OnEnd({host::RunKind::kImport, 3, ".0013", 20});
    EXPECT_EQ(Lines(), R"({"event":"end","road":"import","status":3,"next_id":".0013","y_offset":20})"
                       "\n");
    m_trace.OnEnd({host::RunKind::kFont, std::nullopt, "", 0});
    EXPECT_EQ(Lines(), R"({"event":"end","road":"font","next_id":"","y_offset":0})"
                       "\n");
    m_trace.OnException("cut short");
    EXPECT_EQ(Lines(), R"({"event":"exception","text":"cut short"})"
                       "\n");
}

}  // namespace

}  // namespace zel::test
