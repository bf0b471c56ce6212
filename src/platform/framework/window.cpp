#include "platform/framework/window.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

using namespace zel;

namespace {

/// The windows that exist.
std::unordered_set<HWND>& Live() {
    static auto& live = *new std::unordered_set<HWND>;  // never destroyed, so that it outlives every window
    return live;
}

HWND g_focus = nullptr;

}  // namespace

bool HWND__::Exists(HWND window) noexcept {
    return window != nullptr && Live().contains(window);
}

HWND HWND__::Make(HWND parent, std::unique_ptr<HWND__> window) {
    const HWND handle = window.get();
    Live().insert(handle);
    handle->parent = parent;
    if (parent != nullptr) {
        parent->children.push_back(std::move(window));
    } else {
        static_cast<void>(window.release());
    }
    return handle;
}

void HWND__::Destroy(HWND window) {
    if (!IsWindow(window)) return;
    window->Changed(framework::WindowChange::destroyed);
    SendMessageA(window, WM_DESTROY, 0, 0);
    if (!IsWindow(window)) return;  // a handler has destroyed it
    if (window->parent == nullptr) {
        delete window;
        return;
    }
    auto& siblings = window->parent->children;
    const auto place =
        std::find_if(siblings.begin(), siblings.end(), [&](const auto& child) { return child.get() == window; });
    const std::unique_ptr<HWND__> taken = std::move(*place);
    siblings.erase(place);
}

HWND__::~HWND__() {
    children.clear();
    Live().erase(this);
    if (g_focus == this) g_focus = nullptr;
    if (object != nullptr) object->m_hWnd = nullptr;
}

LRESULT HWND__::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SETTEXT:
            SetText(lParam != 0 ? framework::FromParam<const char>(lParam) : "");
            return TRUE;
        case WM_GETTEXTLENGTH:
            return static_cast<LRESULT>(text.size());
        case WM_GETTEXT: {
            if (wParam == 0 || lParam == 0) return 0;
            char* const out = framework::FromParam<char>(lParam);
            const std::size_t length = std::min<std::size_t>(text.size(), wParam - 1);
            std::copy_n(text.data(), length, out);
            out[length] = '\0';
            return static_cast<LRESULT>(length);
        }
        case WM_CLOSE:
            Destroy(this);
            return 0;
        default:
            return 0;
    }
}

CWnd& HWND__::Object() {
    if (object == nullptr) {
        m_temporary = std::make_unique<CWnd>();
        m_temporary->Attach(this);
    }
    return *object;
}

HWND__& HWND__::Top() {
    HWND window = this;
    while (window->parent != nullptr) window = window->parent;
    return *window;
}

HWND__* HWND__::Child(int childId) {
    if (childId == IDC_STATIC) return nullptr;
    const auto found =
        std::find_if(children.begin(), children.end(), [&](const auto& child) { return child->id == childId; });
    return found != children.end() ? found->get() : nullptr;
}

void HWND__::SetFocus() {
    if (std::exchange(g_focus, this) != this) Changed(framework::WindowChange::focus);
}

HWND HWND__::Focus() {
    return g_focus;
}

void HWND__::SetShown(bool on) {
    if (std::exchange(shown, on) != on) Changed(framework::WindowChange::visible);
}

void HWND__::SetEnabled(bool on) {
    if (std::exchange(enabled, on) != on) Changed(framework::WindowChange::enabled);
}

void HWND__::Changed(framework::WindowChange change) {
    const std::vector<framework::WindowListener*> listeners_now = Top().listeners;  // a copy: one may remove itself
    for (framework::WindowListener* const listener : listeners_now) listener->WindowChanged(Object(), change);
}

void HWND__::Notify(UINT code) {
    if (parent != nullptr)
        SendMessageA(parent, WM_COMMAND, MAKEWPARAM(static_cast<UINT>(id), code), framework::ToParam(this));
}

void HWND__::SetText(const char* newText) {
    text = newText;
    Changed(framework::WindowChange::text);
}
