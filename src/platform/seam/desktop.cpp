#include "platform/seam/desktop.h"

#include "platform/seam/current_seam.h"

namespace zel::seam {

namespace {

// Initialised before any code runs, since the default is set while the platform is loaded.
constinit CurrentSeam<Desktop> g_desktop;

}  // namespace

Desktop::~Desktop() = default;

Desktop* SetDesktop(Desktop* desktop) {
    return g_desktop.Set(desktop);
}

Desktop& GetDesktop() {
    return g_desktop.Get();
}

bool SetDefaultDesktop(Desktop* (*make)()) noexcept {
    g_desktop.SetDefault(make);
    return true;
}

}  // namespace zel::seam
