#include "platform/script/dialog_driver.h"

#include <algorithm>

#include "platform/framework/window.h"

namespace zel::script {

namespace {

DialogActor* g_actor = nullptr;

DialogActor& Actor() {
    static DialogActor messages;
    return g_actor != nullptr ? *g_actor : messages;
}

}  // namespace

void SetDialogActor(DialogActor* actor) {
    g_actor = actor;
}

DialogActor::~DialogActor() = default;

void DialogActor::Type(CDialog&, CWnd& control, const std::string& text) {
    control.SetFocus();
    control.SetWindowText(text.substr(0, control.m_hWnd->limit).c_str());
}

void DialogActor::Press(CDialog&, CWnd& control) {
    control.SendMessage(BM_CLICK);
}

void DialogActor::Choose(CDialog&, CWnd& control, bool is_list_box, int index) {
    control.SetFocus();
    control.SendMessage(is_list_box ? LB_SETCURSEL : CB_SETCURSEL, static_cast<WPARAM>(index));
}

void DialogActor::PressEnter(CDialog& dialog, CWnd* button) {
    if (button != nullptr) {
        button->SendMessage(BM_CLICK);
    } else {
        dialog.SendMessage(WM_COMMAND, dialog.GetDefID() != 0 ? dialog.GetDefID() : static_cast<UINT>(IDOK));
    }
}

void DialogActor::PressEscape(CDialog& dialog) {
    dialog.SendMessage(WM_COMMAND, IDCANCEL);
}

void DialogActor::Close(CDialog& dialog) {
    dialog.SendMessage(WM_CLOSE);
}

CWnd* DialogDriver::Usable(int id) const {
    CWnd* const control = m_dialog.HasEnded() ? nullptr : m_dialog.GetDlgItem(id);
    return control != nullptr && control->IsWindowVisible() && control->IsWindowEnabled() ? control : nullptr;
}

bool DialogDriver::IsListBox(int id) const {
    const framework::DialogTemplate* const source = m_dialog.GetTemplate();
    return source != nullptr &&
           std::any_of(source->controls.begin(), source->controls.end(), [id](const auto& control) {
               return control.id == id && control.kind == framework::ControlKind::list_box;
           });
}

bool DialogDriver::Type(int id, const std::string& text) {
    CWnd* const control = Usable(id);
    if (control == nullptr) return false;
    Actor().Type(m_dialog, *control, text);
    return true;
}

bool DialogDriver::Press(int id) {
    CWnd* const control = Usable(id);
    if (control == nullptr) return false;
    Actor().Press(m_dialog, *control);
    return true;
}

bool DialogDriver::Check(int id, bool on) {
    return Usable(id) != nullptr && (IsChecked(id) == on || Press(id));
}

bool DialogDriver::Choose(int id, int index) {
    CWnd* const control = Usable(id);
    if (control == nullptr || index < 0) return false;
    const bool is_list_box = IsListBox(id);
    if (index >= control->SendMessage(is_list_box ? LB_GETCOUNT : CB_GETCOUNT)) return false;
    Actor().Choose(m_dialog, *control, is_list_box, index);
    return true;
}

bool DialogDriver::Choose(int id, const std::string& text) {
    const std::vector<std::string> list = List(id);
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i] == text) return Choose(id, static_cast<int>(i));
    }
    return false;
}

bool DialogDriver::PressEnter() {
    if (m_dialog.HasEnded()) return false;
    const int id = m_dialog.GetDefID() != 0 ? static_cast<int>(m_dialog.GetDefID()) : IDOK;
    CWnd* const button = Usable(id);
    if (button == nullptr && m_dialog.GetDlgItem(id) != nullptr) return false;
    Actor().PressEnter(m_dialog, button);
    return true;
}

void DialogDriver::PressEscape() {
    Actor().PressEscape(m_dialog);
}
void DialogDriver::Close() {
    Actor().Close(m_dialog);
}

std::string DialogDriver::Caption() const {
    CString caption;
    m_dialog.GetWindowText(caption);
    return caption.GetString();
}

std::string DialogDriver::Text(int id) const {
    CString text;
    m_dialog.GetDlgItemText(id, text);
    return text.GetString();
}

std::vector<std::string> DialogDriver::List(int id) const {
    std::vector<std::string> list;
    CWnd* const control = m_dialog.GetDlgItem(id);
    const bool is_list_box = IsListBox(id);
    const LRESULT count = control != nullptr ? control->SendMessage(is_list_box ? LB_GETCOUNT : CB_GETCOUNT) : 0;
    for (LRESULT i = 0; i < count; ++i) {
        const auto index = static_cast<WPARAM>(i);
        const LRESULT length = control->SendMessage(is_list_box ? LB_GETTEXTLEN : CB_GETLBTEXTLEN, index);
        std::string entry(static_cast<std::size_t>(length), '\0');
        control->SendMessage(is_list_box ? LB_GETTEXT : CB_GETLBTEXT, index, framework::ToParam(entry.data()));
        list.push_back(std::move(entry));
    }
    return list;
}

bool DialogDriver::IsChecked(int id) const {
    CWnd* const control = m_dialog.GetDlgItem(id);
    return control != nullptr && control->SendMessage(BM_GETCHECK) != 0;
}

bool DialogDriver::IsEnabled(int id) const {
    const CWnd* const control = m_dialog.GetDlgItem(id);
    return control != nullptr && control->IsWindowEnabled();
}

bool DialogDriver::IsVisible(int id) const {
    const CWnd* const control = m_dialog.GetDlgItem(id);
    return control != nullptr && control->IsWindowVisible();
}

}  // namespace zel::script
