#pragma once

#include <memory>

#include "platform/framework/cobject.h"
#include "platform/framework/cstring.h"
#include "platform/framework/geometry.h"
#include "platform/framework/message_map.h"
#include "platform/system/messages.h"

class CDataExchange;
class CWnd;
struct CCreateContext;

namespace zel::framework {

/// What has changed in a window.
enum class WindowChange {
    text,
    check,
    list,       // entries of a combo box or list box
    selection,  // selected entry of a combo box or list box, selected text of an edit
    enabled,
    visible,
    rect,
    focus,           // the window has got it
    default_button,  // of a dialog
    ended,           // a dialog has its result
    destroyed        // a dialog's window is about to go
};

/// Hears of every change in a top window and its controls, so that a desktop can mirror them.
class ZEL_PLATFORM_API WindowListener {
  public:
    virtual ~WindowListener();
    virtual void WindowChanged(CWnd& window, WindowChange change) = 0;
};

}  // namespace zel::framework

/// Sends a message and waits for its result. A null handle, or one of a destroyed window, gives 0 and sets the last
/// error 1400.
ZEL_PLATFORM_API LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Whether the handle is that of an existing window.
ZEL_PLATFORM_API BOOL IsWindow(HWND window);

/// A window: an object that stands for a handle. A window without a parent is a top window. All of it belongs to one
/// thread. Left out: painting, menus, timers, posting of messages, the keyboard and the mouse (a desktop's affair).
class ZEL_PLATFORM_API CWnd : public CCmdTarget {
  public:
    CWnd() = default;
    ~CWnd() override;  // destroys the window if there still is one

    HWND m_hWnd = nullptr;
    HWND GetSafeHwnd() const noexcept { return m_hWnd; }

    /// Makes this object stand for a window that has no object of its own. FALSE for a null handle.
    BOOL Attach(HWND window);
    HWND Detach();
    /// The object of a window; one that the window owns, good until it is destroyed, if none was attached. Null for a
    /// dead handle.
    static CWnd* FromHandle(HWND window);

    /// Makes a plain window; class name, style, rectangle's meaning on a screen and context are of no account here.
    virtual BOOL Create(const char* className, const char* windowName, DWORD style, const RECT& rect, CWnd* parent,
                        UINT id, CCreateContext* context = nullptr);
    /// Makes a plain top window, for a host that wants to receive messages.
    BOOL CreateHostWindow(const char* name);
    virtual BOOL DestroyWindow();

    /// Sends a message to the window, which must have been created; 0 if it hasn't.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    /// The control with an id, null for none.
    CWnd* GetDlgItem(int id) const;
    /// Text of a control; a missing control has none.
    void SetDlgItemText(int id, const char* text);
    int GetDlgItemText(int id, CString& text) const;
    /// As above, cut to `maximum` - 1 characters. @return the characters copied.
    int GetDlgItemText(int id, char* text, int maximum) const;

    void SetWindowText(const char* text);
    void GetWindowText(CString& text) const;
    int GetWindowText(char* text, int maximum) const;
    int GetWindowTextLength() const;

    /// @return whether the window was disabled before.
    BOOL EnableWindow(BOOL enable = TRUE);
    BOOL IsWindowEnabled() const;
    /// @param show  SW_HIDE or SW_SHOW. @return whether the window was visible before.
    BOOL ShowWindow(int show);
    /// TRUE when the window and all its parents are shown.
    BOOL IsWindowVisible() const;

    /// Rectangle on the screen, in pixels; empty without a window.
    void GetWindowRect(RECT* rect) const;
    /// Moves a top window on the screen, a control in its parent.
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE);
    void MoveWindow(const RECT* rect, BOOL repaint = TRUE);

    CWnd* SetFocus();
    static CWnd* GetFocus();

    /// Exchanges data between controls and members by DoDataExchange: TRUE saves to the members, FALSE fills the
    /// controls. Notifications of the controls don't reach the window meanwhile. FALSE when there is no window.
    BOOL UpdateData(BOOL saveAndValidate = TRUE);

    int MessageBox(const char* text, const char* caption = nullptr, UINT type = 0);

    /// Who hears of changes in this top window, the first that was added first. The caller keeps it alive until it is
    /// removed or the window is gone.
    void AddChangeListener(zel::framework::WindowListener& listener);
    void RemoveChangeListener(zel::framework::WindowListener& listener);

  protected:
    friend LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    /// Takes every message that is sent to the window: the message maps first, then DefWindowProc.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual void DoDataExchange(CDataExchange* exchange);

    /// Hands WM_CLOSE on to the default handling.
    afx_msg void OnClose();

    DECLARE_MESSAGE_MAP()
};
