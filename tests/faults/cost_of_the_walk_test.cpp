// The cost of a character: no allocation, and one opened file for a stored bitmap glyph.
#include <gtest/gtest.h>

#include "faults/failing.h"
#include "module/contract/zel_message.h"
#include "module/state/module_state.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using failing::Call;
using module_test::FontSet;
using module_test::MessageOf;
using module_test::ModuleTest;
using module_test::OpenDialog;
using module_test::PlainFont;

int g_calls = 0;
void CountCall(CWnd*, tag_CharInf*, unsigned) {
    ++g_calls;
}

struct Cost {
    int calls;
    std::uint64_t allocations, opened;
};

class CostOfTheWalk : public ModuleTest {
  protected:
    CostOfTheWalk() {
        files::FontFile font = PlainFont("Fam Regular", "A");
        font.header.font_id_text = "5007";
        font.AddStored('S', module_test::SolidGlyph(3, 3), 0, 0);
        WriteFont(1, font);
        CString path("D:\\MACHINE");
        EXPECT_EQ(m_fonts.ReadFont(path, 1, 0, false), 1);
        m_dialog.m_mapBitStreamId.SetAt(7, "Number seven, a name that fits no small buffer, bold BT");
        m_dialog.m_mapBitStreamFamily.SetAt("Fam", "Family of a name that fits no small buffer, bold BT");
        m_dialog.m_mapTypeFace.SetAt("Family of a name that fits no small buffer, bold BT", "Installed");
    }
    Cost Run(std::size_t length, char character, bool tt_convert) {
        WriteMessage(MessageOf({files::RowFromText(99, std::string(length, character), 0, 9)}));
        CZelMessage message("", "D:\\MESSAGES", ".0001", &m_dialog);
        EXPECT_TRUE(message.ReadMessage(&m_dialog));
        g_pfnOnChar = &CountCall;
        const auto count = [&](Call kind) {
            g_calls = 0;
            const failing::Armed counted(kind, UINT64_MAX, false);
            message.EmitCharacters(&Host(), &m_fonts, true, tt_convert);
            return counted.Count();
        };
        const std::uint64_t allocations = count(Call::kAllocation), opened = count(Call::kOpen);
        return {g_calls, allocations, opened};
    }

  private:
    OpenDialog m_dialog{nullptr};
    FontSet m_fonts;
};

TEST_F(CostOfTheWalk, RowOf63CharactersAllocatesNoMoreThanARowOfOne) {
    for (const char character : {'A', 'S', '?'}) {
        for (const bool tt_convert : {false, true}) {
            SCOPED_TRACE(character);
            const Cost one = Run(1, character, tt_convert), many = Run(63, character, tt_convert);
            EXPECT_EQ(one.calls, 1);
            EXPECT_EQ(many.calls, 63);
            EXPECT_GT(one.allocations, 0U) << "the two records of the walk, so the count works";
            EXPECT_EQ(many.allocations, one.allocations);
            EXPECT_EQ(many.opened, character == 'S' ? 63U : 0U);
        }
    }
}

}  // namespace

}  // namespace zel::test
