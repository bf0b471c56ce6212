// The description and the effect record of a font, from its header.
#include <cstring>

#include <gmock/gmock.h>

#include "module/contract/records/edge.h"
#include "module/contract/records/effpar.h"
#include "module/contract/zel_message.h"
#include "module/font/format/convert_font_header.h"
#include "module/translate/font_face.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::ModuleTest;
using module_test::OpenDialog;

tag_font_header Header(const std::string& name, const std::string& id = "") {
    files::FontFile font = module_test::PlainFont(name);
    font.header.font_id_text = id;
    return font::ConvertFontHeader(files::WriteFontHeader(font));
}

struct FaceCase {
    const char* name;
    const char* font_name;
    const char* id;
    const char* face;
    int weight;
    int italic;
    const char* found_before = "";  // the last look-up of an earlier character
};

class Face : public ModuleTest {
  protected:
    Face() {
        for (const WORD key : {WORD{0}, WORD{1}}) m_dialog.m_mapBitStreamId.SetAt(key, "Number One bold BT");
        m_dialog.m_mapBitStreamId.SetAt(2077, "Lost italic BT");
        m_dialog.m_mapBitStreamId.SetAt(60535, "Wrapped BT");
        m_dialog.m_mapBitStreamFamily.SetAt("Fam", "Fam bold italic BT");
        m_dialog.m_mapBitStreamFamily.SetAt("Long", "Long BT");
        m_dialog.m_mapBitStreamFamily.SetAt("NoFace", "NoFace bold BT");
        m_dialog.m_mapTypeFace.SetAt("Number One bold BT", "One");
        m_dialog.m_mapTypeFace.SetAt("Wrapped BT", "An installed face of more than thirty-one characters");
        m_dialog.m_mapTypeFace.SetAt("Fam bold italic BT", "Family");
        m_dialog.m_mapTypeFace.SetAt("Long BT", "A face of forty characters, no less, x");
    }
    OpenDialog m_dialog{nullptr};
};

TEST_F(Face, DependsOnNameNumberAndMaps) {
    constexpr FaceCase kCases[] = {
        {"tt plain", "TT Arial", "", "Arial", 400, 0},
        {"tt bold italic", "TT Times Bold Italic", "", "Times", 700, 1},
        {"tt italic bold keeps italic in the face", "TT Times Italic Bold", "", "Times Italic", 700, 1},
        {"tt italic", "TT Comic Sans Italic", "", "Comic Sans", 400, 1},
        {"tt boldly counts as bold", "TT Face Boldly", "", "Face", 700, 0},
        {"tt is cut at 31", "TT 1234567890123456789012345678901234567890", "", "1234567890123456789012345678901", 400,
         0},
        {"tt bold alone keeps the default face", "TT Bold", "", "Arial", 700, 0},
        {"tt without a face", "TT ", "", "", 400, 0},
        {"tt needs its blank", "TTArial", "", "Arial", 400, 0},
        {"tt case counts", "tt Times Bold", "", "Arial", 400, 0},
        {"number 5000 is none", "x", "5000", "Arial", 400, 0},
        {"number 5001 is the first", "Fam", "5001", "                            One", 700, 0},
        {"number wraps in 16 bits", "x", "-001", "An installed face of more than ", 400, 0},
        {"number that is known but not installed uses the name", "Fam x", "7077", "Family", 700, 1},
        {"its style is kept for an unknown name", "x", "7077", "Arial", 400, 1},
        {"first word", "Fam Light", "12", "Family", 700, 1},
        {"first word is exact", "Family", "", "Arial", 400, 0},
        {"name is cut at 31", "Long", "", "A face of forty characters, no ", 400, 0},
        {"not installed still has its style", "NoFace", "", "Arial", 700, 0},
        {"style of the font name does not count", "x Bold Italic ", "", "Arial", 400, 0},
        {"unknown font uses the last look up", "x", "", "Arial", 700, 1, "Other bold italic BT"},
        {"styles need their blanks", "x", "", "Arial", 400, 0, "bold italic"},
    };
    for (const FaceCase& row : kCases) {
        SCOPED_TRACE(row.name);
        const tag_font_header header = Header(row.font_name, row.id);
        LOGFONT font;
        translate::InitLogFont(&font);
        if (translate::IsTrueTypeName(header.Name())) {
            translate::ApplyTrueTypeName(header.Name(), font);
        } else {
            CString found(row.found_before);
            translate::ApplyFontMaps(header, m_dialog, found, font);
        }
        EXPECT_STREQ(font.lfFaceName, row.face);
        EXPECT_EQ(font.lfWeight, row.weight);
        EXPECT_EQ(font.lfItalic, row.italic);
    }
}

struct HeightCase {
    int font_height, edge_type, edge_size;
    LONG height;
};

TEST(FontHeight, IsTheHeightWithoutEdgeTimes118) {
    for (const HeightCase& row : {HeightCase{40, 0, 9, 47},
                                  {40, 1, 2, 42},
                                  {40, 2, 2, 45},
                                  {40, 3, 2, 45},
                                  {40, 4, 2, 47},
                                  {40, 15, 2, 47},
                                  {7, 2, 10, -3},
                                  {0, 0, 0, 0},
                                  {-32768, 1, 255, -39267},
                                  {32767, 0, 0, 38665}}) {
        tag_font_header header{};
        header.font_height = static_cast<std::int16_t>(row.font_height);
        header.edge_bits = static_cast<std::uint8_t>(row.edge_type | 0x70);
        header.edge_size = static_cast<std::uint8_t>(row.edge_size);
        LOGFONT font{};
        translate::ApplyFontHeight(header, font);
        EXPECT_EQ(font.lfHeight, row.height) << row.font_height << " " << row.edge_type;
    }
}

TEST(Edge, AnglesAndSwitch) {
    constexpr int kAngles[] = {135, 180, 225, 270, 315, 0, 45, 90, 135, 135, 135, 135, 135, 135, 135, 135};
    for (int direction = 0; direction < 16; ++direction) EXPECT_EQ(EdgeAngle(direction), kAngles[direction]);
    for (int type = 0; type < 16; ++type) {
        tag_font_header header{};
        header.edge_bits = static_cast<std::uint8_t>(type | 9 << 4);
        header.edge_size = 200;
        tag_font_memory slot;
        slot.font_header = &header;
        CZelMessage message(nullptr, nullptr, nullptr, nullptr);
        EFFPAR effect;
        std::memset(&effect, 0xFF, sizeof effect);
        message.ApplySlotEffects(&slot, &effect);
        EFFPAR expected{};
        expected.effect_ratio = 0.75;
        expected.effect_const = 4;
        expected.edge_size = 200;
        expected.edge_angle = 135;
        expected.edge_type = type;
        expected.edge_on = type >= 1 && type <= 3 ? 1 : 0;
        EXPECT_EQ(std::memcmp(&effect, &expected, sizeof effect), 0) << type;
        message.ApplySlotEffects(&slot, nullptr);
    }
}

struct LegacyCase {
    const char* font_name;
    int glyph_kind;  // of the last character
    bool owner;
    const char* face;
    int weight;
};

TEST_F(Face, OneDrawableGlyphMakesASlotALegacyFont) {
    for (const LegacyCase& row : {
             LegacyCase{"Fam", 0, true, "Family", 700},
             LegacyCase{"Fam", 0x80, true, "Family", 700},
             LegacyCase{"Fam", 170, true, "Zelmara! (15) Fam", 700},
             LegacyCase{"TT A name longer than 14", 0x40, true, "Zelmara! (15) TT A name long", 400},
             LegacyCase{"Fam Bold x", 0, false, "Zelmara! (15) Fam Bold x", 700},
             LegacyCase{"Fam Bold", 2, false, "Zelmara! (15) Fam Bold", 400},
             LegacyCase{"TT Times Bold", 0, false, "Times", 700},
         }) {
        tag_font_header header = Header(row.font_name);
        tag_char_entry directory[kDirectoryEntries] = {};
        directory[191].glyph_kind = static_cast<std::uint8_t>(row.glyph_kind);
        tag_font_memory slot;
        slot.font_header = &header;
        slot.char_directory = directory;
        CZelMessage message(nullptr, nullptr, nullptr, row.owner ? &m_dialog : nullptr);
        LOGFONT font;
        message.MakeFontDescription(&slot, &font, 15);
        EXPECT_STREQ(font.lfFaceName, row.face);
        EXPECT_EQ(font.lfWeight, row.weight) << row.font_name;
        EXPECT_EQ(font.lfHeight, 47);
        message.MakeFontDescription(&slot, nullptr, 15);
    }
}

}  // namespace

}  // namespace zel::test
