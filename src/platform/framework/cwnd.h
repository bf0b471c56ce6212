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
    /// Entries of a combo box or list box.
    list,
    /// Selected entry of a combo box or list box, selected text of an edit.
    selection,
    enabled,
    visible,
    rect,
    /// The window has received the focus.
    focus,
    /// Default button of a dialog.
    default_button,
    /// A dialog has its result.
    ended,
    /// A dialog's window is about to be destroyed.
    destroyed
};

/// Is notified of every change in a top window and its controls, so that a desktop can mirror them.
class ZEL_PLATFORM_API WindowListener {
  public:
    virtual ~WindowListener();
    virtual void WindowChanged(CWnd& window, WindowChange change) = 0;
};

}  // namespace zel::framework

/// Sends a message to a window and returns its result.
/// @return 0, with last error ERROR_INVALID_WINDOW_HANDLE, for a null handle or that of a destroyed window.
ZEL_PLATFORM_API LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Whether the handle is that of an existing window.
ZEL_PLATFORM_API BOOL IsWindow(HWND window);

/// A window: an object that is attached to a handle. A window without a parent is a top window. A window is used on one
/// thread. Not provided: painting, menus, timers, posting of messages, the keyboard and the mouse (see seam/desktop.h).
class ZEL_PLATFORM_API CWnd : public CCmdTarget {
  public:
    CWnd() = default;
    /// Destroys the window if there is one.
    ~CWnd() override;

    HWND m_hWnd = nullptr;
    HWND GetSafeHwnd() const noexcept { return m_hWnd; }

    /// Attaches this object to a window that has no object.
    /// @return FALSE for a null handle or a window that has one.
    BOOL Attach(HWND window);
    HWND Detach();
    /// The object of a window. If none is attached, the window creates one, which is valid until the window is
    /// destroyed.
    /// @return null for an invalid handle.
    static CWnd* FromHandle(HWND window);

    /// Creates a plain window. Of the style, only WS_VISIBLE is used; class name and context are ignored.
    /// @param rect  in the parent; of a top window, on the screen.
    /// @return FALSE if the object already has a window.
    virtual BOOL Create(const char* className, const char* windowName, DWORD style, const RECT& rect, CWnd* parent,
                        UINT id, CCreateContext* context = nullptr);
    /// Creates a plain, hidden top window, for a host that receives messages.
    BOOL CreateHostWindow(const char* name);
    virtual BOOL DestroyWindow();

    /// Sends a message to the window.
    /// @return the result of the message; 0 without a window.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    /// The control with an id, null for none.
    CWnd* GetDlgItem(int id) const;
    /// Text of a control. A missing control has an empty text.
    void SetDlgItemText(int id, const char* text);
    int GetDlgItemText(int id, CString& text) const;
    /// The same, cut to `maximum` - 1 characters.
    /// @return the number of characters copied.
    int GetDlgItemText(int id, char* text, int maximum) const;

    void SetWindowText(const char* text);
    void GetWindowText(CString& text) const;
    int GetWindowText(char* text, int maximum) const;
    int GetWindowTextLength() const;

    /// @return whether the window was disabled before.
    BOOL EnableWindow(BOOL enable = TRUE);
    BOOL IsWindowEnabled() const;
    /// @param show  SW_HIDE or SW_SHOW.
    /// @return whether the window was visible before.
    BOOL ShowWindow(int show);
    /// TRUE if the window and all its parents are shown.
    BOOL IsWindowVisible() const;

    /// Rectangle on the screen in pixels; empty without a window.
    void GetWindowRect(RECT* rect) const;
    /// Moves and resizes a top window on the screen, a control in its parent.
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE);
    void MoveWindow(const RECT* rect, BOOL repaint = TRUE);

    CWnd* SetFocus();
    static CWnd* GetFocus();

    /// Exchanges data between controls and members by DoDataExchange. Meanwhile the window ignores notifications of its
    /// controls.
    /// @param saveAndValidate  TRUE copies from the controls to the members, FALSE from the members to the controls.
    /// @return FALSE without a window.
    BOOL UpdateData(BOOL saveAndValidate = TRUE);

    int MessageBox(const char* text, const char* caption = nullptr, UINT type = 0);

    /// Adds and removes listeners of this top window. They are called in the order in which they were added.
    /// @param listener  must live until it is removed or the window is destroyed.
    void AddChangeListener(zel::framework::WindowListener& listener);
    void RemoveChangeListener(zel::framework::WindowListener& listener);

  protected:
    friend LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    /// Handles every message that is sent to the window: by the message maps or, without a handler, by DefWindowProc.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual void DoDataExchange(CDataExchange* exchange);

    /// Passes WM_CLOSE to DefWindowProc.
    afx_msg void OnClose();

    DECLARE_MESSAGE_MAP()
};
