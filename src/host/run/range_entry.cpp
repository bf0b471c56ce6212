#include "host/run/range_entry.h"

#include "host/module_text.h"
#include "module/contract/dialog_ids.h"
#include "platform/script/dialog_driver.h"

namespace zel::run {

std::optional<std::string> EnterRange(const script::HeadlessDesktop& desktop, CDialog& dialog,
                                      const host::NumberRange& range) {
    script::DialogDriver user(dialog);
    user.Type(BatchControl::kStartIdEdit, range.first);
    user.Type(BatchControl::kEndIdEdit, range.last);
    const std::size_t boxes = desktop.Boxes().size();
    user.Press(IDOK);
    if (dialog.HasEnded()) return std::nullopt;
    user.Press(IDCANCEL);
    return desktop.Boxes().size() > boxes ? host::OneLine(desktop.Boxes().back().text) : "nothing was run";
}

}  // namespace zel::run
