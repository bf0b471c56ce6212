#pragma once

#include <functional>
#include <string>

#include "platform/framework/cdialog.h"
#include "platform/framework/cwinapp.h"
#include "platform/framework/data_exchange.h"

inline constexpr UINT kTestDialog = 500;
inline constexpr int kEdit = 10, kCombo = 11, kSorted = 12, kCheck = 13, kRadioA = 14, kRadioB = 15, kRadioOther = 16,
                     kHidden = 17, kDisabled = 18, kList = 19;

inline constexpr ControlTemplate kTestControls[] = {
    {IDC_STATIC, ControlKind::group_box, "Options", 0, 0, 200, 100, ctl_none},
    {kEdit, ControlKind::edit, nullptr, 4, 8, 4, 8, ctl_tab_stop | ctl_auto_scroll},
    {kCombo, ControlKind::combo_box, nullptr, 0, 0, 1, 1, ctl_tab_stop},
    {kSorted, ControlKind::combo_box, nullptr, 0, 0, 1, 1, ctl_sorted},
    {kCheck, ControlKind::check_box, "Skip", 0, 0, 1, 1, ctl_auto},
    {kRadioA, ControlKind::radio_button, "A", 0, 0, 1, 1, ctl_auto | ctl_group},
    {kRadioB, ControlKind::radio_button, "B", 0, 0, 1, 1, ctl_auto},
    {kRadioOther, ControlKind::radio_button, "Other", 0, 0, 1, 1, ctl_auto | ctl_group},
    {kHidden, ControlKind::push_button, "Hidden", 0, 0, 1, 1, ctl_hidden},
    {kDisabled, ControlKind::push_button, "Disabled", 0, 0, 1, 1, ctl_disabled},
    {kList, ControlKind::list_box, nullptr, 0, 0, 1, 1, ctl_tab_stop},
    {IDOK, ControlKind::default_button, "OK", 0, 0, 1, 1, ctl_tab_stop},
};
inline constexpr DialogTemplate kTestDialogs[] = {
    {kTestDialog, "Test", "MS Sans Serif", 8, 200, 100, WS_POPUP | WS_CAPTION, kTestControls}};
inline constexpr ModuleInstance kTestModule{"test", kTestDialogs};

/// Makes the templates above the current ones for as long as the object lives.
class ResourcesInForce {
  public:
    ResourcesInForce() { AfxGetModuleState()->m_hCurrentResourceHandle = &kTestModule; }
    ~ResourcesInForce() { AfxGetModuleState()->m_hCurrentResourceHandle = nullptr; }

    ResourcesInForce(const ResourcesInForce&) = delete;
    ResourcesInForce& operator=(const ResourcesInForce&) = delete;
};

/// A dialog that writes down what reaches it.
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
