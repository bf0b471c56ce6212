#pragma once

#include <climits>
#include <memory>
#include <string>
#include <vector>

#include "platform/framework/cwnd.h"
#include "platform/framework/dialog_template.h"

/// What a window handle points to. Private to the platform: everybody else goes by messages and by CWnd.
///
/// A window is owned by its parent, a top window by nobody but the call to Destroy. A notification may run a handler
/// that destroys the window, so sending one is always the last thing that a window does.
struct HWND__ {
    /// @param parent  may be null. The new window belongs to it, and is found by the handle from now on.
    static HWND Make(HWND parent, std::unique_ptr<HWND__> window);
    /// Destroys a window with all its controls; nothing for a dead handle.
    static void Destroy(HWND window);
    /// Whether the handle is that of an existing window.
    static bool Exists(HWND window) noexcept;

    HWND__() = default;
    virtual ~HWND__();
    HWND__(const HWND__&) = delete;
    HWND__& operator=(const HWND__&) = delete;

    /// The system's own handling of a message, behind that of the window's object.
    virtual LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);

    /// The attached object, or one of the window's own.
    CWnd& Object();
    HWND__& Top();
    HWND__* Child(int childId);

    void SetFocus();
    static HWND Focus();

    void SetShown(bool on);
    void SetEnabled(bool on);
    void Changed(zel::framework::WindowChange change);
    /// Sends the parent a notification of this control; the window may be gone afterwards.
    void Notify(UINT code);

    CWnd* object = nullptr;
    std::vector<zel::framework::WindowListener*> listeners;  // of a top window
    HWND parent = nullptr;
    std::vector<std::unique_ptr<HWND__>> children;

    int id = 0;
    unsigned flags = 0;  // ctl:: values
    std::string text;
    RECT rect{};                  // in the parent, of a top window on the screen
    std::size_t limit = INT_MAX;  // characters that a user may type
    bool shown = false;
    bool enabled = true;

  protected:
    /// Takes a text given by WM_SETTEXT.
    virtual void SetText(const char* newText);

  private:
    std::unique_ptr<CWnd> m_temporary;
};

namespace zel::framework {

/// Makes the window of a template's control, without a place in a parent yet.
std::unique_ptr<HWND__> MakeControl(const ControlTemplate& control);

/// The handle or text that a message's parameter holds.
template <class T>
T* FromParam(LPARAM value) noexcept {
    return reinterpret_cast<T*>(value);  // NOLINT(performance-no-int-to-ptr): that is how messages carry addresses
}
template <class T>
T* FromParam(WPARAM value) noexcept {
    return FromParam<T>(static_cast<LPARAM>(value));
}
inline LPARAM ToParam(const void* pointer) noexcept {
    return reinterpret_cast<LPARAM>(pointer);
}

}  // namespace zel::framework
