#pragma once

#include <QApplication>
#include <QTest>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "platform/framework/cwinapp.h"
#include "programs/desktop/dialogs/dialog_view.h"
#include "programs/desktop/screen_desktop.h"

namespace zel::screen_test {

namespace ctl = framework::ctl;

inline constexpr UINT kWindow = 600;
inline constexpr int kEdit = 10, kPassword = 11, kCombo = 12, kList = 13, kCheck = 14, kRadioA = 15, kRadioB = 16,
                     kStatus = 17, kRun = 18;

inline constexpr framework::ControlTemplate kControls[] = {
    {IDC_STATIC, framework::ControlKind::group_box, "All", 2, 2, 196, 96, ctl::none},
    {IDC_STATIC, framework::ControlKind::static_text, "&Name :", 7, 10, 30, 8, ctl::none},
    {kEdit, framework::ControlKind::edit, nullptr, 40, 8, 60, 13,
     ctl::tab_stop | ctl::auto_scroll | ctl::no_hide_selection},
    {kPassword, framework::ControlKind::edit, nullptr, 110, 8, 60, 13, ctl::tab_stop | ctl::password},
    {kCombo, framework::ControlKind::combo_box, nullptr, 40, 24, 60, 50, ctl::tab_stop},
    {kList, framework::ControlKind::list_box, nullptr, 110, 24, 60, 30, ctl::tab_stop},
    {kCheck, framework::ControlKind::check_box, "&Check", 7, 40, 60, 10, ctl::automatic | ctl::tab_stop},
    {kRadioA, framework::ControlKind::radio_button, "A", 7, 52, 40, 10, ctl::automatic | ctl::group | ctl::tab_stop},
    {kRadioB, framework::ControlKind::radio_button, "B", 50, 52, 40, 10, ctl::automatic},
    {kStatus, framework::ControlKind::static_text, "", 7, 66, 180, 10, ctl::group},
    {kRun, framework::ControlKind::push_button, "&Run", 7, 78, 50, 14, ctl::tab_stop},
    {IDOK, framework::ControlKind::default_button, "OK", 70, 78, 50, 14, ctl::tab_stop},
    {IDCANCEL, framework::ControlKind::push_button, "Cancel", 130, 78, 50, 14, ctl::tab_stop},
};
inline constexpr framework::DialogTemplate kDialogs[] = {
    {kWindow, "Window", "MS Sans Serif", 8, 200, 100, WS_POPUP | WS_CAPTION, kControls}};
inline constexpr HINSTANCE__ kModule{"window", kDialogs};

/// A dialog that records the calls of its handlers.
class WindowDialog : public CDialog {
  public:
    WindowDialog() : CDialog(kWindow) {}

    std::string events;
    std::function<void()> on_run = [this] { events += "run "; };

  protected:
    void OnOK() override { events += "ok "; }
    void OnCancel() override { events += "cancel "; }
    afx_msg void OnRun() { on_run(); }
    afx_msg void OnChange() { events += "change "; }
    afx_msg void OnClose() {
        events += "close ";
        CDialog::OnClose();
    }
    DECLARE_MESSAGE_MAP()
};

/// A screen with one dialog, which is shown while a test operates it.
class OnScreen : public testing::Test {
  protected:
    OnScreen() {
        AfxGetModuleState()->m_hCurrentResourceHandle = &kModule;
        seam::SetDesktop(&screen);
    }
    ~OnScreen() override {
        seam::SetDesktop(nullptr);
        AfxGetModuleState()->m_hCurrentResourceHandle = nullptr;
    }

    void Run(CDialog& shown, const std::function<void(desktop::DialogView&)>& user) {
        InNextWindow([&] {
            desktop::DialogView& view = *screen.Find(shown);
            ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
            user(view);
            if (!shown.HasEnded()) shown.EndDialog(IDCANCEL);
        });
        shown.DoModal();
    }
    void Run(const std::function<void(desktop::DialogView&)>& user) { Run(dialog, user); }

    template <class Kind = QWidget>
    Kind& Widget(int id) {
        return static_cast<Kind&>(screen.Find(dialog)->Find(dialog.GetDlgItem(id)->m_hWnd)->Widget());
    }
    std::string Text(int id) {
        CString text;
        dialog.GetDlgItemText(id, text);
        return text.GetString();
    }
    std::string Focused() { return QApplication::focusWidget()->objectName().toStdString(); }
    std::string Events() { return std::exchange(dialog.events, ""); }

    desktop::QtDesktop screen;
    WindowDialog dialog;
};

}  // namespace zel::screen_test
