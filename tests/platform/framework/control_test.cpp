#include <array>
#include <string>

#include <gtest/gtest.h>

#include "platform/framework/cdialog.h"
#include "platform/framework/cwinapp.h"
#include "platform/script/dialog_driver.h"
#include "platform/test_dialog.h"

namespace zel::test {

namespace {

LPARAM Text(const char* text) {
    return reinterpret_cast<LPARAM>(text);
}

/// The test dialog, created but not shown.
class Controls : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(m_dialog.Create(kTestDialog)); }
    LRESULT Send(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return m_dialog.GetDlgItem(id)->SendMessage(message, wParam, lParam);
    }
    std::string TextOf(int id) {
        CString text;
        m_dialog.GetDlgItemText(id, text);
        return text.GetString();
    }

    const ResourcesInForce m_resources;
    TestDialog m_dialog;
};
using ComboBox = Controls;
using ListBox = Controls;
using Edit = Controls;
using Button = Controls;

TEST_F(ComboBox, FillsItsListAndShowsTheSelectedEntryInTheEditField) {
    EXPECT_EQ(Send(kCombo, CB_ADDSTRING, 0, Text("b")), 0);
    EXPECT_EQ(Send(kCombo, CB_INSERTSTRING, 0, Text("a")), 0);
    EXPECT_EQ(Send(kCombo, CB_INSERTSTRING, static_cast<WPARAM>(-1), Text("c")), 2);
    EXPECT_EQ(Send(kCombo, CB_INSERTSTRING, 9, Text("d")), CB_ERR);
    EXPECT_EQ(Send(kCombo, CB_GETCOUNT), 3);
    EXPECT_EQ(Send(kCombo, CB_GETCURSEL), CB_ERR);
    EXPECT_EQ(Send(kCombo, CB_SETCURSEL, 1), 1);
    EXPECT_EQ(TextOf(kCombo), "b");
    char entry[4] = {};
    EXPECT_EQ(Send(kCombo, CB_GETLBTEXT, 2, Text(entry)), 1);
    EXPECT_STREQ(entry, "c");
    EXPECT_EQ(Send(kCombo, CB_GETLBTEXT, 3, Text(entry)), CB_ERR);
    EXPECT_EQ(Send(kCombo, CB_GETLBTEXTLEN, 3), CB_ERR);
}

TEST_F(ComboBox, FollowsItsSelectionThroughInsertionAndDeletion) {
    for (const char* entry : {"a", "b", "c"}) Send(kCombo, CB_ADDSTRING, 0, Text(entry));
    Send(kCombo, CB_SETCURSEL, 1);
    Send(kCombo, CB_INSERTSTRING, 0, Text("first"));
    EXPECT_EQ(Send(kCombo, CB_GETCURSEL), 2);
    EXPECT_EQ(Send(kCombo, CB_DELETESTRING, 0), 3);
    EXPECT_EQ(Send(kCombo, CB_GETCURSEL), 1);
    EXPECT_EQ(Send(kCombo, CB_DELETESTRING, 1), 2);
    EXPECT_EQ(Send(kCombo, CB_GETCURSEL), CB_ERR);
    EXPECT_EQ(TextOf(kCombo), "b") << "the edit field is unchanged";
    EXPECT_EQ(Send(kCombo, CB_DELETESTRING, 2), CB_ERR);
}

TEST_F(ComboBox, LosesSelectionAndTextToAnIndexOutsideTheList) {
    m_dialog.SetDlgItemText(kCombo, "typed");
    EXPECT_EQ(TextOf(kCombo), "typed");
    EXPECT_EQ(Send(kCombo, CB_SETCURSEL, 0), CB_ERR);
    EXPECT_EQ(TextOf(kCombo), "");
}

TEST_F(ComboBox, FindsAnExactTextInAnyCaseAfterTheStart) {
    for (const char* entry : {"D:\\One", "D:\\Two", "d:\\one"}) Send(kCombo, CB_ADDSTRING, 0, Text(entry));
    EXPECT_EQ(Send(kCombo, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), Text("D:\\ONE")), 0);
    EXPECT_EQ(Send(kCombo, CB_FINDSTRINGEXACT, 0, Text("D:\\ONE")), 2);
    EXPECT_EQ(Send(kCombo, CB_FINDSTRINGEXACT, 2, Text("D:\\ONE")), 0);
    EXPECT_EQ(Send(kCombo, CB_FINDSTRINGEXACT, 1, Text("D:\\two")), 1);
    EXPECT_EQ(Send(kCombo, CB_FINDSTRINGEXACT, 0, Text("D:\\On")), CB_ERR);
}

TEST_F(ComboBox, SortsItsListOnlyIfItsTemplateSaysSo) {
    for (const char* entry : {"b", "C", "a"}) Send(kSorted, CB_ADDSTRING, 0, Text(entry));
    EXPECT_EQ(Send(kSorted, CB_FINDSTRINGEXACT, 0, Text("C")), 2);
    EXPECT_EQ(Send(kSorted, CB_FINDSTRINGEXACT, 0, Text("a")), 0);
}

TEST_F(ListBox, HasEntriesAndOneSelection) {
    for (const char* entry : {"b", "a"}) EXPECT_NE(Send(kList, LB_ADDSTRING, 0, Text(entry)), LB_ERR);
    m_dialog.ShowWindow(SW_SHOW);
    script::DialogDriver user(m_dialog);
    EXPECT_EQ(user.List(kList), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(Send(kList, LB_GETCURSEL), LB_ERR);
    EXPECT_FALSE(user.Choose(kList, "A"));
    EXPECT_TRUE(user.Choose(kList, "a"));
    EXPECT_EQ(Send(kList, LB_GETCURSEL), 1);
    EXPECT_FALSE(user.Choose(kList, 2));
    EXPECT_EQ(Send(kList, LB_SETCURSEL, static_cast<WPARAM>(-1)), LB_ERR);
    EXPECT_EQ(Send(kList, LB_GETTEXTLEN, 2), LB_ERR);
    Send(kList, LB_RESETCONTENT);
    EXPECT_EQ(Send(kList, LB_GETCOUNT), 0);
}

TEST_F(Edit, NotifiesItsDialogOfEveryTextThatIsSet) {
    m_dialog.SetDlgItemText(kEdit, ".0012");
    m_dialog.SetDlgItemText(kEdit, ".0012");
    EXPECT_EQ(m_dialog.events, "update change update change ");
}

TEST_F(Edit, KeepsASelectionWithinItsText) {
    m_dialog.SetDlgItemText(kEdit, ".0012");
    DWORD start = 9, end = 9;
    const auto selection = [&] {
        Send(kEdit, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        return std::array{start, end};
    };
    Send(kEdit, EM_SETSEL, 0, -1);
    EXPECT_EQ(selection(), (std::array<DWORD, 2>{0, 5}));
    Send(kEdit, EM_SETSEL, 2, 99);
    EXPECT_EQ(selection(), (std::array<DWORD, 2>{2, 5}));
    m_dialog.SetDlgItemText(kEdit, "1");
    EXPECT_EQ(selection(), (std::array<DWORD, 2>{0, 0}));
}

TEST_F(Edit, CutsItsTextToTheBuffer) {
    m_dialog.SetDlgItemText(kEdit, "123456");
    char text[4] = "zzz";
    EXPECT_EQ(m_dialog.GetDlgItemText(kEdit, text, 4), 3);
    EXPECT_STREQ(text, "123");
    EXPECT_EQ(m_dialog.GetDlgItemText(999, text, 4), 0);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(m_dialog.GetDlgItemText(kEdit, text, 0), 0);
}

TEST_F(Button, TogglesAnAutomaticCheckBoxBeforeTheNotification) {
    Send(kCheck, BM_CLICK);
    EXPECT_EQ(m_dialog.events, "check1 ");
    Send(kCheck, BM_CLICK);
    EXPECT_EQ(m_dialog.events, "check1 check0 ");
    Send(kCheck, BM_SETCHECK, 1);
    EXPECT_EQ(m_dialog.events, "check1 check0 ") << "only a click sends a notification";
    m_dialog.GetDlgItem(kCheck)->EnableWindow(FALSE);
    Send(kCheck, BM_CLICK);
    EXPECT_EQ(Send(kCheck, BM_GETCHECK), 1) << "disabled";
}

TEST_F(Button, ExcludesTheOtherRadioButtonsOfItsGroupOnly) {
    const auto states = [&] {
        std::string all;
        for (const int id : {kRadioA, kRadioB, kRadioOther}) all += std::to_string(Send(id, BM_GETCHECK));
        return all;
    };
    Send(kRadioOther, BM_CLICK);
    Send(kRadioA, BM_CLICK);
    EXPECT_EQ(states(), "101");
    Send(kRadioB, BM_CLICK);
    EXPECT_EQ(states(), "011");
}

TEST_F(Controls, MoveOnTheScreenWithTheirDialog) {
    CRect dialog, control;
    m_dialog.GetWindowRect(dialog);
    EXPECT_EQ(dialog, CRect(0, 0, 300, 163));
    m_dialog.MoveWindow(100, 200, dialog.Width(), dialog.Height());
    m_dialog.GetDlgItem(kEdit)->GetWindowRect(control);
    EXPECT_EQ(control, CRect(106, 213, 112, 226));
}

}  // namespace

}  // namespace zel::test
