// One import: the messages to the host, their order, and the state after each kind of end.
#include <gmock/gmock.h>

#include "module/contract/dialog_ids.h"
#include "module/contract/zel_message.h"
#include "platform/framework/exceptions.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using files::MessageFile;
using module_test::MessageOf;
using module_test::ModuleTest;
using module_test::OpenDialog;
using module_test::PlainFont;
using module_test::SolidGlyph;
using module_test::WindowMessage;
using testing::ElementsAre;
using testing::IsEmpty;

MessageFile Text(std::string_view text = "ABC") {
    return MessageOf({files::RowFromText(99, text, 0, 9)});
}

MessageFile WithTabs() {
    MessageFile file = Text();
    file.tabs.emplace();
    files::TabField tab;
    tab.tab_start = 200;
    tab.tab_end = 300;
    file.tabs->fields = {tab};
    tab.tab_start = 400;
    tab.tab_end = 500;
    file.tabs->fields.push_back(tab);
    return file;
}

/// One import by a hidden dialog; by default warnings are not skipped.
class OneImport : public ModuleTest {
  public:
    using ModuleTest::desktop;
    using ModuleTest::Native;
    using ModuleTest::WriteFile;
    using ModuleTest::WriteFont;
    using ModuleTest::WriteMessage;

  protected:
    void Run(const std::string& name = ".0001", int skip_warnings = 0) {
        CString path(("D:\\MESSAGES\\" + name).c_str()), font_dir;
        dialog = std::make_unique<OpenDialog>(path, font_dir);
        dialog->m_pHostWnd = &Host();
        CZelFont::m_bIgnoreErrors = skip_warnings;
        dialog->Read();
    }
    ~OneImport() override {
        if (dialog) delete dialog->m_pFont;
    }
    std::string EditText() {
        CString text;
        dialog->GetDlgItemText(ImportControl::kMessageIdEdit, text);
        return text.GetString();
    }
    std::unique_ptr<OpenDialog> dialog;
};

struct EndCase {
    const char* name;
    void (*arrange)(OneImport&);
    /// Messages after the first, 1212.
    const char* order;
    int status;
    /// Text of the edit after the import.
    const char* id;
};

void AnswerRgba(OneImport& test, int radio, bool ok) {
    test.WriteFile("MESSAGES/.0001", files::WriteRgbaFile(radio == 0 ? 714 : 717, SolidGlyph(1, 1)));
    test.desktop.HandleDialog(kRgbaDialog, [radio, ok](CDialog& dialog) {
        script::DialogDriver driver(dialog);
        EXPECT_TRUE(driver.IsChecked(RgbaControl::kObjectRadio));
        if (radio != 0) driver.Press(radio);
        driver.Press(ok ? IDOK : IDCANCEL);
    });
}

class EachEnd : public OneImport, public testing::WithParamInterface<EndCase> {};

TEST_P(EachEnd, HasItsMessagesAndStatus) {
    WriteFont(1, PlainFont());
    WriteMessage(Text());
    GetParam().arrange(*this);
    Run();
    EXPECT_EQ(Order(), "1212" + std::string(GetParam().order));
    EXPECT_EQ(dialog->m_iStatus, GetParam().status);
    EXPECT_EQ(EditText(), GetParam().id);
    EXPECT_FALSE(desktop.HasWaitCursor());
    EXPECT_EQ(dialog->m_pFont != nullptr, GetParam().status == 5 || chars.size() != 0);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, EachEnd,
    testing::Values(
        EndCase{"finished", [](OneImport&) {}, " 1157 char*3 1181 1180 1213 15", 0, ".0002"},
        EndCase{"finished_with_tabs", [](OneImport& test) { test.WriteMessage(WithTabs()); },
                " 1157 char*5 1181 1158 1180 1213 15", 0, ".0002"},
        EndCase{"rgba_as_object", [](OneImport& test) { AnswerRgba(test, 0, true); }, " 1211 1213 15", 0, ".0002"},
        EndCase{"rgba_as_background", [](OneImport& test) { AnswerRgba(test, RgbaControl::kBackgroundRadio, true); },
                " 1211 1213 15", 0, ".0002"},
        EndCase{"rgba_cancelled", [](OneImport& test) { AnswerRgba(test, RgbaControl::kBackgroundRadio, false); },
                " 15", 0, ".0001"},
        EndCase{"no_font_directory", [](OneImport& test) { std::filesystem::remove_all(test.Native("MACHINE")); }, "",
                1, "0001"},
        EndCase{"no_message_directory", [](OneImport& test) { std::filesystem::remove_all(test.Native("MESSAGES")); },
                "", 2, "0001"},
        EndCase{"no_message", [](OneImport& test) { std::filesystem::remove(test.Native("MESSAGES/.0001")); }, "", 3,
                "0001"},
        EndCase{"no_load", [](OneImport& test) { test.WriteFile("MESSAGES/.0001", "x"); }, "", 4, ".0001"},
        EndCase{"font_prompt_cancelled",
                [](OneImport& test) {
                    std::filesystem::remove(test.Native("MACHINE/.0001"));
                    test.desktop.SetYesNoAnswer(IDCANCEL);
                },
                "", 5, ".0001"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST_F(OneImport, ShortRgbaFileIsReportedAndOffered) {
    files::Bytes bytes = files::WriteRgbaFile(714, SolidGlyph(1, 1));
    bytes.resize(140);
    WriteFile("MESSAGES/.0001", bytes);
    Run();
    EXPECT_EQ(desktop.Modals().size(), 1U);
    EXPECT_EQ(desktop.Boxes().back().text, "Invalid file: D:\\MESSAGES\\.0001");
}

TEST_F(OneImport, EachMessageHasItsParameters) {
    WriteFont(1, PlainFont());
    MessageFile file = WithTabs();
    file.header.font_numbers[4] = 2;  // a font that is missing
    WriteMessage(file);
    std::vector<UINT> to_main;
    on_message = [&](const WindowMessage& message) {
        if (message.target == 'm') to_main.push_back(message.message);
        if (message.message == 1157) {
            const CZelFont& fonts = *reinterpret_cast<CZelFont*>(message.lParam);
            EXPECT_EQ(&fonts, dialog->m_pFont);
            EXPECT_EQ(fonts.m_MessageBlock->font_numbers[4], 2);
            EXPECT_EQ(fonts.m_Palette[1 + 1], 0x0000FF00U);
            EXPECT_STREQ(fonts.m_Slots[0].log_font->lfFaceName, "Zelmara! (0) Plain");
            EXPECT_EQ(fonts.m_Slots[4].font_header, nullptr);
            EXPECT_EQ(fonts.m_Slots[4].font_copy, nullptr);
        } else if (message.message == 1181 || message.message == 1180) {
            EXPECT_EQ(reinterpret_cast<CZelMessage*>(message.lParam)->m_pRows[0].CharCount(), 5);
        } else if (message.message == 1158) {
            EXPECT_EQ(message.wParam, 2U);
            EXPECT_EQ(std::uint16_t{reinterpret_cast<tag_tab_field*>(message.lParam)[1].tab_end}, 507);
        } else if (message.message == 1213) {
            EXPECT_EQ(reinterpret_cast<CZelTransDlg*>(message.lParam)->m_sMessageID, ".0001")
                << "still the imported id";
        }
    };
    desktop.SetYesNoAnswer(IDNO);
    Run();
    EXPECT_THAT(to_main, ElementsAre(1212, 1213));
    EXPECT_EQ(dialog->m_sMessageID, ".0002");
    EXPECT_EQ(OpenDialog::M_sNextMessage, ".0002");
    EXPECT_EQ(dialog->GetDefID(), static_cast<UINT>(ImportControl::kReadButton));
}

TEST_F(OneImport, MessageWithoutFontsHasEmptySlots) {
    MessageFile file = Text();
    file.header.font_numbers[0] = 65535;
    WriteMessage(file);
    Run();
    EXPECT_EQ(Order(), "1212 1157 1181 1180 1213 15");
    EXPECT_THAT(Boxes(), IsEmpty());
}

TEST_F(OneImport, CancelAtTheLastSlotReleasesTheOthers) {
    WriteFont(1, PlainFont());
    MessageFile file = Text();
    file.header.font_numbers.fill(1);
    file.header.font_numbers[15] = 2;
    WriteMessage(file);
    desktop.SetYesNoAnswer(IDCANCEL);
    Run();
    EXPECT_EQ(dialog->m_iStatus, 5);
    for (const tag_font_memory& slot : dialog->m_pFont->m_Slots) {
        EXPECT_EQ(slot.font_header, nullptr);
        EXPECT_EQ(slot.font_copy, nullptr);
    }
    EXPECT_TRUE(CZelFont::m_bCancelFontBrowse);
    dialog->Read();
    EXPECT_EQ(desktop.Boxes().size(), 2U) << "the next import prompts again";
}

TEST_F(OneImport, FailedLoadKeepsThePreviousFontSet) {
    WriteFont(1, PlainFont());
    WriteMessage(Text());
    WriteFile("MESSAGES/.0002", "x");
    Run();
    const CZelFont* const before = dialog->m_pFont;
    dialog->Read();
    EXPECT_EQ(dialog->m_iStatus, 4);
    EXPECT_EQ(dialog->m_pFont, before);
    EXPECT_NE(before->m_Slots[0].font_header, nullptr);
    EXPECT_EQ(dialog->m_sMessageID, ".0002");
}

TEST_F(OneImport, EachSlotUsesTheFontDirectoryOfTheControl) {
    WriteFile("MACHINE/.0001", files::WriteFont(PlainFont()));
    WriteFile("ELSEWHERE/.0002", files::WriteFont(PlainFont()));
    MessageFile file = Text();
    file.header.font_numbers[0] = 2;
    file.header.font_numbers[1] = 1;
    file.header.font_numbers[2] = 3;
    WriteMessage(file);
    desktop.SetYesNoAnswer(IDYES);
    desktop.QueueFile("D:\\ELSEWHERE\\.0002");
    Run();
    ASSERT_EQ(desktop.Boxes().size(), 2U);
    EXPECT_THAT(desktop.Boxes()[1].text, testing::HasSubstr("D:\\MACHINE\\.0003")) << "not where the user browsed";
    EXPECT_NE(dialog->m_pFont->m_Slots[1].font_header, nullptr);
}

TEST_F(OneImport, ExceptionEndsTheWaitCursor) {
    files::FontFile font = PlainFont();
    font.AddStored('S', SolidGlyph(3, 3), 0, 0);
    files::Bytes bytes = files::WriteFont(font);
    bytes.resize(bytes.size() - 40);
    WriteFile("MACHINE/.0001", bytes);
    WriteMessage(Text("AS"));
    try {
        Import();
        ADD_FAILURE() << "nothing was thrown";
    } catch (CFileException* error) {
        error->Delete();
    }
    EXPECT_EQ(Order(), "1212 1157 char*1");
    EXPECT_FALSE(desktop.HasWaitCursor());
}

}  // namespace

}  // namespace zel::test
