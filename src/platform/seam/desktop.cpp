#include "platform/seam/desktop.h"

#include <utility>

namespace zel::seam {

namespace {

Desktop* g_current_desktop = nullptr;
Desktop* (*g_make_desktop)() = nullptr;

}  // namespace

Desktop::~Desktop() = default;

Desktop* SetDesktop(Desktop* desktop) {
    return std::exchange(g_current_desktop, desktop);
}

Desktop& GetDesktop() {
    if (g_current_desktop != nullptr) return *g_current_desktop;
    static auto& desktop = *g_make_desktop();  // outlives every module
    return desktop;
}

bool SetDefaultDesktop(Desktop* (*make)()) noexcept {
    g_make_desktop = make;
    return true;
}

}  // namespace zel::seam
