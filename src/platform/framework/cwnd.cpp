#include "platform/framework/cwnd.h"

#include <string>
#include <utility>

#include "platform/framework/cwinapp.h"
#include "platform/framework/data_exchange.h"
#include "platform/framework/message_box.h"
#include "platform/framework/window.h"
#include "platform/system/errors.h"

using namespace zel;

namespace {

// The window that UpdateData runs for, which ignores notifications of its controls.
HWND g_muted = nullptr;

/// Mutes a window as long as the object lives.
class NotificationMute {
  public:
    explicit NotificationMute(HWND window) : m_before(std::exchange(g_muted, window)) {}
    ~NotificationMute() { g_muted = m_before; }

    NotificationMute(const NotificationMute&) = delete;
    NotificationMute& operator=(const NotificationMute&) = delete;

  private:
    HWND m_before;
};

}  // namespace

namespace zel::framework {

WindowListener::~WindowListener() = default;

}  // namespace zel::framework

BOOL IsWindow(HWND window) {
    return HWND__::Exists(window);
}

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!IsWindow(window)) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return 0;
    }
    return window->Object().WindowProc(message, wParam, lParam);
}

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
END_MESSAGE_MAP()

CWnd::~CWnd() {
    if (m_hWnd != nullptr) CWnd::DestroyWindow();
    if (AfxGetThread()->m_pMainWnd == this) AfxGetThread()->m_pMainWnd = nullptr;
}

BOOL CWnd::Attach(HWND window) {
    if (!IsWindow(window) || window->object != nullptr) return FALSE;
    window->object = this;
    m_hWnd = window;
    return TRUE;
}

HWND CWnd::Detach() {
    if (m_hWnd != nullptr) m_hWnd->object = nullptr;
    return std::exchange(m_hWnd, nullptr);
}

CWnd* CWnd::FromHandle(HWND window) {
    return IsWindow(window) ? &window->Object() : nullptr;
}

BOOL CWnd::Create(const char*, const char* windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                  CCreateContext*) {
    if (m_hWnd != nullptr) return FALSE;
    auto window = std::make_unique<HWND__>();
    window->id = static_cast<int>(id);
    window->text = windowName != nullptr ? windowName : "";
    window->rect = rect;
    window->shown = (style & WS_VISIBLE) != 0;
    return Attach(HWND__::Make(parent != nullptr ? parent->m_hWnd : nullptr, std::move(window)));
}

BOOL CWnd::CreateHostWindow(const char* name) {
    return CWnd::Create(nullptr, name, 0, RECT{}, nullptr, 0);
}

BOOL CWnd::DestroyWindow() {
    if (m_hWnd == nullptr) return FALSE;
    HWND__::Destroy(m_hWnd);
    return TRUE;
}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return SendMessageA(m_hWnd, message, wParam, lParam);
}

CWnd* CWnd::GetDlgItem(int id) const {
    return m_hWnd != nullptr ? FromHandle(m_hWnd->Child(id)) : nullptr;
}

void CWnd::SetDlgItemText(int id, const char* text) {
    if (CWnd* const control = GetDlgItem(id)) control->SetWindowText(text);
}

int CWnd::GetDlgItemText(int id, CString& text) const {
    const CWnd* const control = GetDlgItem(id);
    if (control != nullptr) {
        control->GetWindowText(text);
    } else {
        text.Empty();
    }
    return text.GetLength();
}

int CWnd::GetDlgItemText(int id, char* text, int maximum) const {
    if (const CWnd* const control = GetDlgItem(id)) return control->GetWindowText(text, maximum);
    if (text != nullptr && maximum > 0) *text = '\0';
    return 0;
}

void CWnd::SetWindowText(const char* text) {
    SendMessage(WM_SETTEXT, 0, framework::ToParam(text));
}

void CWnd::GetWindowText(CString& text) const {
    const int length = GetWindowTextLength();
    text.Empty();
    if (length > 0) text.ReleaseBuffer(GetWindowText(text.GetBuffer(length), length + 1));
}

int CWnd::GetWindowText(char* text, int maximum) const {
    if (text == nullptr || maximum <= 0) return 0;
    *text = '\0';
    return static_cast<int>(SendMessageA(m_hWnd, WM_GETTEXT, static_cast<WPARAM>(maximum), framework::ToParam(text)));
}

int CWnd::GetWindowTextLength() const {
    return static_cast<int>(SendMessageA(m_hWnd, WM_GETTEXTLENGTH, 0, 0));
}

BOOL CWnd::EnableWindow(BOOL enable) {
    if (m_hWnd == nullptr) return FALSE;
    const BOOL wasDisabled = !m_hWnd->enabled;
    m_hWnd->SetEnabled(enable != FALSE);
    return wasDisabled;
}

BOOL CWnd::IsWindowEnabled() const {
    return m_hWnd != nullptr && m_hWnd->enabled;
}

BOOL CWnd::ShowWindow(int show) {
    if (m_hWnd == nullptr) return FALSE;
    const BOOL wasShown = m_hWnd->shown;
    m_hWnd->SetShown(show != SW_HIDE);
    return wasShown;
}

BOOL CWnd::IsWindowVisible() const {
    const HWND__* window = m_hWnd;
    while (window != nullptr && window->shown && window->parent != nullptr) window = window->parent;
    return window != nullptr && window->shown;
}

void CWnd::GetWindowRect(RECT* rect) const {
    if (rect == nullptr) return;
    *rect = m_hWnd != nullptr ? m_hWnd->rect : RECT{};
    for (const HWND__* window = m_hWnd; window != nullptr && window->parent != nullptr; window = window->parent) {
        rect->left += window->parent->rect.left;
        rect->right += window->parent->rect.left;
        rect->top += window->parent->rect.top;
        rect->bottom += window->parent->rect.top;
    }
}

void CWnd::MoveWindow(int x, int y, int width, int height, BOOL) {
    if (m_hWnd == nullptr) return;
    m_hWnd->rect = {x, y, x + width, y + height};
    m_hWnd->Changed(framework::WindowChange::rect);
}

void CWnd::MoveWindow(const RECT* rect, BOOL repaint) {
    MoveWindow(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, repaint);
}

CWnd* CWnd::SetFocus() {
    CWnd* const before = GetFocus();
    if (m_hWnd != nullptr) m_hWnd->SetFocus();
    return before;
}

CWnd* CWnd::GetFocus() {
    return FromHandle(HWND__::Focus());
}

BOOL CWnd::UpdateData(BOOL saveAndValidate) {
    if (m_hWnd == nullptr) return FALSE;
    const NotificationMute mute(m_hWnd);
    CDataExchange exchange(this, saveAndValidate);
    DoDataExchange(&exchange);
    return TRUE;
}

int CWnd::MessageBox(const char* text, const char* caption, UINT type) {
    return MessageBoxA(m_hWnd, text, caption != nullptr ? caption : AfxGetApp()->m_pszAppName.GetString(), type);
}

void CWnd::AddChangeListener(framework::WindowListener& listener) {
    if (m_hWnd != nullptr) m_hWnd->listeners.push_back(&listener);
}

void CWnd::RemoveChangeListener(framework::WindowListener& listener) {
    if (m_hWnd != nullptr) std::erase(m_hWnd->listeners, &listener);
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_COMMAND) {
        if (OnCommand(wParam, lParam)) return 0;
    } else if (const AFX_PMSG handler = framework::FindHandler(GetMessageMap(), message, 0, 0)) {
        (this->*handler)();
        return 0;
    }
    return DefWindowProc(message, wParam, lParam);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_hWnd != nullptr ? m_hWnd->Handle(message, wParam, lParam) : 0;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    if (lParam != 0 && g_muted != nullptr && g_muted == m_hWnd) return TRUE;
    return OnCmdMsg(LOWORD(wParam), HIWORD(wParam));
}

void CWnd::DoDataExchange(CDataExchange*) {}

void CWnd::OnClose() {
    DefWindowProc(WM_CLOSE, 0, 0);
}
