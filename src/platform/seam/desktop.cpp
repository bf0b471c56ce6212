#include "platform/seam/desktop.h"

#include <utility>

namespace zel::seam {

namespace {

Desktop* g_current = nullptr;
Desktop* (*g_make_default)() = nullptr;

}  // namespace

Desktop::~Desktop() = default;

Desktop* SetDesktop(Desktop* desktop) {
    return std::exchange(g_current, desktop);
}

Desktop& GetDesktop() {
    if (g_current != nullptr) return *g_current;
    static auto& desktop = *g_make_default();  // outlives every module
    return desktop;
}

bool SetDefaultDesktop(Desktop* (*make)()) noexcept {
    g_make_default = make;
    return true;
}

}  // namespace zel::seam
