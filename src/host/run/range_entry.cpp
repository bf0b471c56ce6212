#include "host/run/range_entry.h"

#include "host/module_text.h"
#include "platform/script/dialog_driver.h"
#include "module/tools/zel_trans_batch.h"

std::optional<std::string> EnterRange(const HeadlessDesktop& desktop, CDialog& dialog, const NumberRange& range) {
    DialogDriver user(dialog);
    user.Type(kStartIdEdit, range.first);
    user.Type(kEndIdEdit, range.last);
    const std::size_t boxes = desktop.Boxes().size();
    user.Press(IDOK);
    if (dialog.HasEnded()) return std::nullopt;
    user.Press(IDCANCEL);
    return desktop.Boxes().size() > boxes ? OneLine(desktop.Boxes().back().text) : "nothing was run";
}
