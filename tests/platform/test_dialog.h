#pragma once

#include <functional>
#include <string>

#include "platform/framework/cdialog.h"
#include "platform/framework/cwinapp.h"
#include "platform/framework/data_exchange.h"

namespace zel::test {

namespace ctl = framework::ctl;

inline constexpr UINT kTestDialog = 500;
inline constexpr int kEdit = 10, kCombo = 11, kSorted = 12, kCheck = 13, kRadioA = 14, kRadioB = 15, kRadioOther = 16,
                     kHidden = 17, kDisabled = 18, kList = 19;

inline constexpr framework::ControlTemplate kTestControls[] = {
    {IDC_STATIC, framework::ControlKind::group_box, "Options", 0, 0, 200, 100, ctl::none},
    {kEdit, framework::ControlKind::edit, nullptr, 4, 8, 4, 8, ctl::tab_stop | ctl::auto_scroll},
    {kCombo, framework::ControlKind::combo_box, nullptr, 0, 0, 1, 1, ctl::tab_stop},
    {kSorted, framework::ControlKind::combo_box, nullptr, 0, 0, 1, 1, ctl::sorted},
    {kCheck, framework::ControlKind::check_box, "Skip", 0, 0, 1, 1, ctl::automatic},
    {kRadioA, framework::ControlKind::radio_button, "A", 0, 0, 1, 1, ctl::automatic | ctl::group},
    {kRadioB, framework::ControlKind::radio_button, "B", 0, 0, 1, 1, ctl::automatic},
    {kRadioOther, framework::ControlKind::radio_button, "Other", 0, 0, 1, 1, ctl::automatic | ctl::group},
    {kHidden, framework::ControlKind::push_button, "Hidden", 0, 0, 1, 1, ctl::hidden},
    {kDisabled, framework::ControlKind::push_button, "Disabled", 0, 0, 1, 1, ctl::disabled},
    {kList, framework::ControlKind::list_box, nullptr, 0, 0, 1, 1, ctl::tab_stop},
    {IDOK, framework::ControlKind::default_button, "OK", 0, 0, 1, 1, ctl::tab_stop},
};
inline constexpr framework::DialogTemplate kTestDialogs[] = {
    {kTestDialog, "Test", "MS Sans Serif", 8, 200, 100, WS_POPUP | WS_CAPTION, kTestControls}};
inline constexpr HINSTANCE__ kTestModule{"test", kTestDialogs};

/// Makes the templates above the current ones during its lifetime.
class ResourcesInForce {
  public:
    ResourcesInForce() { AfxGetModuleState()->m_hCurrentResourceHandle = &kTestModule; }
    ~ResourcesInForce() { AfxGetModuleState()->m_hCurrentResourceHandle = nullptr; }

    ResourcesInForce(const ResourcesInForce&) = delete;
    ResourcesInForce& operator=(const ResourcesInForce&) = delete;
};

/// A dialog that records its commands and notifications.
class TestDialog : public CDialog {
  public:
    TestDialog() : CDialog(kTestDialog) {}

    std::string events;
    CString edit_text = "";
    int checked = 0;
    BOOL focus_is_open = TRUE;
    std::function<void()> on_check;

  protected:
    void DoDataExchange(CDataExchange* exchange) override {
        CDialog::DoDataExchange(exchange);
        DDX_Text(exchange, kEdit, edit_text);
        DDX_Check(exchange, kCheck, checked);
    }
    BOOL OnInitDialog() override {
        CDialog::OnInitDialog();
        return focus_is_open;
    }
    void OnCancel() override {
        events += "cancel ";
        CDialog::OnCancel();
    }
    afx_msg void OnEditUpdate() { events += "update "; }
    afx_msg void OnEditChange() { events += "change "; }
    afx_msg void OnCheck() {
        events += "check" + std::to_string(GetDlgItem(kCheck)->SendMessage(BM_GETCHECK)) + " ";
        if (on_check) on_check();
    }
    afx_msg void OnClose() {
        events += "close ";
        CDialog::OnClose();
    }
    DECLARE_MESSAGE_MAP()
};

}  // namespace zel::test
