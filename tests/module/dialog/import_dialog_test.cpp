// The import dialog: its template, its controls and its two file dialogs.
#include <gmock/gmock.h>

#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_export.h"
#include "platform/system/registry.h"
#include "platform/system/version.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::MessageOf;
using module_test::ModuleTest;
using module_test::OpenDialog;
using testing::ElementsAre;

class ImportDialog : public ModuleTest {};

TEST_F(ImportDialog, IsTheTemplateThatTheHostKnows) {
    std::string controls, hidden;
    RunDialog([&](script::DialogDriver& user, CZelTransDlg& dialog) {
        const framework::DialogTemplate& shown = *dialog.GetTemplate();
        EXPECT_STREQ(shown.font_name, "MS Sans Serif");
        EXPECT_THAT((std::vector<int>{static_cast<int>(shown.id), shown.point_size, shown.cx, shown.cy}),
                    ElementsAre(129, 8, 418, 82));
        EXPECT_EQ(user.Caption(), "Zelmara! Message Import");
        for (std::size_t i = 0; i < shown.controls.size(); ++i) {
            const framework::ControlTemplate& control = shown.controls[i];
            CString text;
            text.Format("%d '%s' %d,%d %dx%d|", control.id, control.text, control.x, control.y, control.cx, control.cy);
            controls += text.GetString();
            if (dialog.GetControl(i)->IsWindowVisible() == FALSE) hidden += control.text;
        }
    });
    EXPECT_EQ(controls,
              "-1 'Import From Local Drive' 7,2 273x61|-1 '&Font Dir :' 10,12 32x12|1000 '' 41,11 173x51|"
              "-1 '&Msg Dir :' 10,26 32x12|1002 '' 41,25 173x55|-1 'Msg I&D :' 10,43 32x12|1007 '' 41,42 70x14|"
              "1006 '&Read ' 160,42 53x16|1001 'Brow&se Font' 220,11 53x12|1003 'Brows&e Msg' 220,26 53x12|"
              "1008 '&Batch Convert' 220,42 53x16|1010 ' C&opy files from   Zelmara! Disk' 285,7 53x22|"
              "1045 'Co&py Zelmara!    files via FTP' 285,36 53x22|1 'Cancel' 347,7 53x16|"
              "1011 'TT Convert' 344,26 55x10|-1 'Options' 345,33 66x25|132 'Skip &Warnings' 350,42 58x10|"
              "1012 'Baseline Align' 343,26 60x10|-1 'Note : Before Importing Zelmara! messages,  files must be "
              "transferred to Windows formatted media.' 7,64 339x11|");
    EXPECT_EQ(hidden, "TT ConvertBaseline Align");
}

TEST_F(ImportDialog, StartsWithTheLastIdAndTheFocusInIt) {
    OpenDialog::M_sNextMessage = ".0041";
    RunDialog([](script::DialogDriver& user, CZelTransDlg& dialog) {
        EXPECT_EQ(user.Text(ImportControl::kMessageIdEdit), ".0041");
        EXPECT_EQ(CWnd::GetFocus()->m_hWnd == dialog.GetDlgItem(ImportControl::kMessageDirBox)->m_hWnd, true)
            << "the fixture typed in it last";
        EXPECT_EQ(dialog.GetDefID(), 1U) << "Enter presses the button captioned Cancel";
        user.Type(ImportControl::kMessageIdEdit, "5");
        EXPECT_EQ(dialog.GetDefID(), static_cast<UINT>(ImportControl::kReadButton))
            << "and Read after the id was changed";
    });
    CString empty;
    OpenDialog dialog(empty, empty);
    EXPECT_EQ(CWnd::GetFocus()->m_hWnd, dialog.GetDlgItem(ImportControl::kMessageIdEdit)->m_hWnd);
}

TEST_F(ImportDialog, SelectsTheNewestDirectoryAndKeepsTheHostsTextWithoutOne) {
    on_message = [](const module_test::WindowMessage& sent) {
        if (sent.message != 1212) return;
        auto& dialog = *reinterpret_cast<CZelTransDlg*>(sent.lParam);
        for (const int box : {ImportControl::kFontDirBox, ImportControl::kMessageDirBox})
            dialog.SetDlgItemText(box, "D:\\HOST");
    };
    CString empty;
    for (const bool stored : {false, true}) {
        char list[] = "FontDir", entry[] = "D:\\STORED";
        if (stored) OpenDialog(nullptr).StoreRecentList(0, list, entry);
        const OpenDialog dialog(empty, empty);
        CString font_dir, message_dir;
        dialog.GetDlgItemText(ImportControl::kFontDirBox, font_dir);
        dialog.GetDlgItemText(ImportControl::kMessageDirBox, message_dir);
        EXPECT_EQ(font_dir, stored ? "D:\\STORED" : "D:\\HOST");
        EXPECT_EQ(message_dir, "D:\\HOST");
    }
}

struct PositionCase {
    int x, y;
    bool moved;
};

TEST_F(ImportDialog, RestoresItsPositionWithinTheLimits) {
    RECT default_rect{};
    RunDialog([&](script::DialogDriver&, CZelTransDlg& dialog) { dialog.GetWindowRect(&default_rect); });
    for (const PositionCase& row : {PositionCase{1, 1999, true},
                                    {1999, 1, true},
                                    {0, 5, false},
                                    {5, 2000, false},
                                    {-3, 5, false},
                                    {5, 0, false}}) {
        settings.SetProfileInt("ZELFTPSaveOptions", "DialogX", row.x);
        settings.SetProfileInt("ZELFTPSaveOptions", "DialogY", row.y);
        RunDialog([&](script::DialogDriver&, CZelTransDlg& dialog) {
            RECT rect{};
            dialog.GetWindowRect(&rect);
            EXPECT_EQ(rect.left, row.moved ? row.x : default_rect.left) << row.x << " " << row.y;
            EXPECT_EQ(rect.top, row.moved ? row.y : default_rect.top) << row.x << " " << row.y;
            EXPECT_EQ(rect.right - rect.left, default_rect.right - default_rect.left);
        });
        EXPECT_EQ(settings.GetProfileInt("ZELFTPSaveOptions", "DialogX"), row.moved ? row.x : default_rect.left);
    }
}

TEST_F(ImportDialog, CopyButtonDependsOnTheSystemVersion) {
    struct Case {
        DWORD major, minor;
        bool enabled;
    };
    for (const Case& row : {Case{4, 10, true}, {5, 0, true}, {5, 1, false}, {6, 1, false}, {6, 0, true}}) {
        system::SetSystemVersion(row.major, row.minor);
        RunDialog([&](script::DialogDriver& user, CZelTransDlg&) {
            EXPECT_EQ(user.IsEnabled(ImportControl::kCopyFilesButton), row.enabled) << row.major << "." << row.minor;
        });
    }
    system::SetSystemVersion(5, 0);
}

TEST_F(ImportDialog, SkipWarningsIsStoredAtOnce) {
    RunDialog([&](script::DialogDriver& user, CZelTransDlg& dialog) {
        EXPECT_FALSE(user.IsChecked(ImportControl::kSkipWarningsCheck));
        for (const int on : {1, 0}) {
            user.Press(ImportControl::kSkipWarningsCheck);
            EXPECT_EQ(CZelFont::m_bIgnoreErrors, on);
            EXPECT_EQ(settings.GetProfileInt("ZELFNTSaveOptions", "SkipWarnings"), on);
            EXPECT_EQ(dialog.m_bImportSkip, 0) << "unchanged";
        }
    });
}

TEST_F(ImportDialog, HiddenCheckBoxesToggleTheirMembers) {
    RunDialog([](script::DialogDriver& user, CZelTransDlg& dialog) {
        EXPECT_FALSE(user.Press(ImportControl::kTrueFontCheck)) << "hidden";
        for (const int on : {1, 0}) {
            dialog.SendMessage(WM_COMMAND, ImportControl::kTrueFontCheck);
            dialog.SendMessage(WM_COMMAND, ImportControl::kBaselineAlignCheck);
            EXPECT_EQ(dialog.m_bTrueFont, on);
            EXPECT_EQ(dialog.m_bBaselineAlign, 1 - on);
        }
    });
}

TEST_F(ImportDialog, BrowsingForFontsSetsTheDirectoryAndResetsTheId) {
    WriteFile("ELSEWHERE/.0009", "x");
    OpenDialog::M_sNextMessage = ".0003";
    desktop.QueueFile(std::nullopt);
    desktop.QueueFile("D:\\ELSEWHERE\\.0009");
    RunDialog([](script::DialogDriver& user, CZelTransDlg&) {
        user.Type(ImportControl::kMessageIdEdit, "typed");
        user.Press(ImportControl::kBrowseFontButton);
        EXPECT_EQ(user.Text(ImportControl::kFontDirBox), "D:\\MACHINE") << "a cancelled dialog changes nothing";
        EXPECT_EQ(user.Text(ImportControl::kMessageIdEdit), "typed");
        user.Press(ImportControl::kBrowseFontButton);
        EXPECT_EQ(user.Text(ImportControl::kFontDirBox), "D:\\ELSEWHERE");
        EXPECT_THAT(user.List(ImportControl::kFontDirBox), ElementsAre("D:\\ELSEWHERE"));
        EXPECT_EQ(user.Text(ImportControl::kMessageIdEdit), ".0003") << "overwritten by the member";
    });
    EXPECT_EQ(desktop.FileDialogs()[0].title, "Zelmara Font Directory");
    EXPECT_EQ(desktop.FileDialogs()[0].initial_dir, "D:\\MACHINE");
    EXPECT_EQ(desktop.FileDialogs()[0].initial_name, "");
}

TEST_F(ImportDialog, BrowsingForAMessageAlsoSetsItsName) {
    desktop.QueueFile("D:\\MESSAGES\\.0009");
    RunDialog([](script::DialogDriver& user, CZelTransDlg& dialog) {
        user.Type(ImportControl::kMessageDirBox, "D:\\NONE");
        user.Press(ImportControl::kBrowseMessageButton);
        EXPECT_EQ(user.Text(ImportControl::kMessageDirBox), "D:\\MESSAGES");
        EXPECT_EQ(user.Text(ImportControl::kMessageIdEdit), ".0009");
        EXPECT_EQ(dialog.GetDefID(), static_cast<UINT>(ImportControl::kReadButton));
    });
    EXPECT_EQ(desktop.FileDialogs()[0].title, "Zelmara Message Directory");
    EXPECT_EQ(desktop.FileDialogs()[0].initial_dir, "") << "there is no such directory";
}

TEST_F(ImportDialog, ImportsSeveralMessages) {
    for (const char* name : {".0007", ".0008"}) WriteMessage(MessageOf({files::EmptyRow(0)}), name);
    desktop.SetYesNoAnswer(IDNO);
    RunDialog([&](script::DialogDriver& user, CZelTransDlg& dialog) {
        user.Type(ImportControl::kMessageIdEdit, "7");
        user.PressEnter();
        EXPECT_EQ(user.Text(ImportControl::kMessageIdEdit), ".0008");
        EXPECT_EQ(dialog.GetDlgItem(ImportControl::kMessageIdEdit)->SendMessage(EM_GETSEL), 5 << 16);
        user.PressEnter();
    });
    EXPECT_EQ(Order(), "1212 1157 char*1 1181 1180 1213 15 1157 char*1 1181 1180 1213 15");
    EXPECT_EQ(OpenDialog::M_sNextMessage, ".0009");
}

}  // namespace

}  // namespace zel::test
