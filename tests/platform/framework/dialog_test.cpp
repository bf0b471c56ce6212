#include <gtest/gtest.h>

#include "platform/framework/cdialog.h"
#include "platform/framework/exceptions.h"
#include "platform/script/headless_desktop.h"
#include "platform/system/errors.h"
#include "platform/test_dialog.h"

namespace zel::test {

BEGIN_MESSAGE_MAP(TestDialog, CDialog)
ON_EN_UPDATE(kEdit, &TestDialog::OnEditUpdate)
ON_EN_CHANGE(kEdit, &TestDialog::OnEditChange)
ON_BN_CLICKED(kCheck, &TestDialog::OnCheck)
ON_WM_CLOSE()
END_MESSAGE_MAP()

namespace {

class Dialogs : public testing::Test {
  protected:
    void SetUp() override { seam::SetDesktop(&m_desktop); }
    void TearDown() override { seam::SetDesktop(nullptr); }

    const ResourcesInForce m_resources;
    script::HeadlessDesktop m_desktop;
    TestDialog m_dialog;
};

TEST_F(Dialogs, AreCreatedFromTemplatesOfTheCurrentModuleOnly) {
    TestDialog other;
    EXPECT_FALSE(other.Create(kTestDialog + 1));
    EXPECT_EQ(other.GetTemplate(), nullptr);
    AfxGetModuleState()->m_hCurrentResourceHandle = nullptr;
    EXPECT_EQ(m_dialog.DoModal(), -1);
    AfxGetModuleState()->m_hCurrentResourceHandle = &kTestModule;
    ASSERT_TRUE(m_dialog.Create(kTestDialog));
    EXPECT_FALSE(m_dialog.Create(kTestDialog)) << "a second window";
    EXPECT_EQ(m_dialog.GetTemplate(), &kTestDialogs[0]);
    EXPECT_FALSE(m_dialog.IsWindowVisible());
    EXPECT_EQ(m_dialog.GetControl(1), m_dialog.GetDlgItem(kEdit));
    EXPECT_NE(m_dialog.GetControl(0), nullptr) << "a control without an id";
    EXPECT_EQ(m_dialog.GetDlgItem(IDC_STATIC), nullptr);
    EXPECT_EQ(m_dialog.GetControl(99), nullptr);
}

TEST_F(Dialogs, PressTheirDefaultButtonOnEnter) {
    ASSERT_TRUE(m_dialog.Create(kTestDialog));
    m_dialog.ShowWindow(SW_SHOW);
    EXPECT_EQ(m_dialog.SendMessage(DM_GETDEFID), static_cast<LRESULT>(MAKEWPARAM(IDOK, DC_HASDEFID)));
    m_dialog.SendMessage(DM_SETDEFID, kCheck);
    EXPECT_TRUE(script::DialogDriver(m_dialog).PressEnter());
    EXPECT_EQ(m_dialog.events, "check1 ");
    m_dialog.SendMessage(DM_SETDEFID, kDisabled);
    EXPECT_FALSE(script::DialogDriver(m_dialog).PressEnter());
    EXPECT_FALSE(m_dialog.HasEnded());
}

TEST_F(Dialogs, FocusTheirFirstControlIfOnInitDialogReturnsTrue) {
    ASSERT_TRUE(m_dialog.Create(kTestDialog));
    EXPECT_EQ(CWnd::GetFocus(), m_dialog.GetDlgItem(kEdit));
    m_dialog.SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(m_dialog.GetDlgItem(kCombo)->m_hWnd), 1);
    EXPECT_EQ(CWnd::GetFocus(), m_dialog.GetDlgItem(kCombo));
    m_dialog.DestroyWindow();
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    m_dialog.focus_is_open = FALSE;
    ASSERT_TRUE(m_dialog.Create(kTestDialog));
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
}

TEST_F(Dialogs, AreDestroyedByAnException) {
    m_dialog.on_check = [] { AfxThrowMemoryException(); };
    m_desktop.HandleDialog(kTestDialog, [](CDialog& dialog) { script::DialogDriver(dialog).Press(kCheck); });
    EXPECT_THROW(m_dialog.DoModal(), CMemoryException*);
    EXPECT_EQ(m_dialog.m_hWnd, nullptr);
}

TEST_F(Dialogs, MayBeDestroyedByTheirOwnHandlers) {
    ASSERT_TRUE(m_dialog.Create(kTestDialog));
    const HWND check = m_dialog.GetDlgItem(kCheck)->m_hWnd;
    m_dialog.on_check = [&] { m_dialog.DestroyWindow(); };
    SendMessageA(check, BM_CLICK, 0, 0);
    EXPECT_FALSE(IsWindow(check));
    EXPECT_EQ(SendMessageA(check, BM_GETCHECK, 0, 0), 0);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
}

TEST_F(Dialogs, NotifyTheirListenerOfEveryChange) {
    struct Listener : framework::WindowListener {
        void WindowChanged(CWnd&, framework::WindowChange change) override { seen.push_back(change); }
        std::vector<framework::WindowChange> seen;
    } listener;
    ASSERT_TRUE(m_dialog.Create(kTestDialog));
    m_dialog.AddChangeListener(listener);
    m_dialog.SetDlgItemText(kEdit, "x");
    m_dialog.GetDlgItem(kEdit)->SendMessage(EM_SETSEL, 0, -1);
    m_dialog.GetDlgItem(kCombo)->SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("x"));
    m_dialog.GetDlgItem(kCheck)->SendMessage(BM_SETCHECK, 1);
    m_dialog.GetDlgItem(kCheck)->EnableWindow(FALSE);
    m_dialog.GetDlgItem(kCheck)->EnableWindow(FALSE);
    m_dialog.GetDlgItem(kHidden)->ShowWindow(SW_SHOW);
    m_dialog.GetDlgItem(kCombo)->SetFocus();
    m_dialog.SendMessage(DM_SETDEFID, kCheck);
    m_dialog.MoveWindow(1, 2, 3, 4);
    m_dialog.EndDialog(5);
    m_dialog.DestroyWindow();
    using enum framework::WindowChange;
    EXPECT_EQ(listener.seen, (std::vector{text, selection, list, check, enabled, visible, focus, default_button, rect,
                                          ended, destroyed}));
}

}  // namespace

}  // namespace zel::test
