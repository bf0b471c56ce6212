#pragma once

#include <climits>
#include <memory>
#include <string>
#include <vector>

#include "platform/framework/cwnd.h"
#include "platform/framework/dialog_template.h"

/// What a window handle points to. Private to the platform; other code uses messages and CWnd.
///
/// The parent owns a window. A top window has no owner: only Destroy deletes it. A notification may call a handler that
/// destroys the window, so sending one is always the last action of a member function.
struct HWND__ {
    /// Gives a window to its parent and makes its handle valid.
    /// @param parent  null for a top window.
    static HWND Make(HWND parent, std::unique_ptr<HWND__> window);
    /// Destroys a window with all its controls. An invalid handle is ignored.
    static void Destroy(HWND window);
    /// Whether the handle is that of an existing window.
    static bool Exists(HWND window) noexcept;

    HWND__() = default;
    virtual ~HWND__();
    HWND__(const HWND__&) = delete;
    HWND__& operator=(const HWND__&) = delete;

    /// Handles a message that the window's object did not handle.
    virtual LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

    /// The attached object. Without one, creates and attaches an object that the window owns.
    CWnd& Object();
    /// The top window that contains this one, or this one.
    HWND__& Top();
    /// The control with an id, null for none.
    HWND__* Child(int childId);

    void SetFocus();
    static HWND Focus();

    void SetShown(bool on);
    void SetEnabled(bool on);
    /// Notifies the listeners of the top window.
    void Changed(zel::framework::WindowChange change);
    /// Sends a notification of this control to the parent. The window may be destroyed when it returns.
    void Notify(UINT code);

    CWnd* object = nullptr;
    /// Of a top window.
    std::vector<zel::framework::WindowListener*> listeners;
    HWND parent = nullptr;
    std::vector<std::unique_ptr<HWND__>> children;

    int id = 0;
    /// ctl:: values.
    unsigned flags = 0;
    std::string text;
    /// In the parent; of a top window, on the screen.
    RECT rect{};
    /// Largest number of characters that a user may type.
    std::size_t limit = INT_MAX;
    bool shown = false;
    bool enabled = true;

  protected:
    /// Handles WM_SETTEXT.
    virtual void SetText(const char* newText);

  private:
    std::unique_ptr<CWnd> m_temporary;
};

namespace zel::framework {

/// Converts between a pointer and the parameter of a message.
template <class T>
T* FromParam(LPARAM value) noexcept {
    return reinterpret_cast<T*>(value);  // NOLINT(performance-no-int-to-ptr): messages carry addresses as integers
}
template <class T>
T* FromParam(WPARAM value) noexcept {
    return FromParam<T>(static_cast<LPARAM>(value));
}
inline LPARAM ToParam(const void* pointer) noexcept {
    return reinterpret_cast<LPARAM>(pointer);
}

}  // namespace zel::framework
