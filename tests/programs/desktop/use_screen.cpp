// Runs the tests of the module's dialogs on a screen.
#include "programs/desktop/make_screen_desktop.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

[[maybe_unused]] const auto g_replaced = std::exchange(module_test::make_desktop, &screen_test::MakeScreenDesktop);

}  // namespace

}  // namespace zel::test
