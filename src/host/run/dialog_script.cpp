#include "host/run/dialog_script.h"

#include "module/contract/zel_trans_dlg.h"
#include "platform/seam/settings_store.h"

namespace zel::run {

namespace {

/// Controls of the choice for an RGBA file.
constexpr UINT kRgbaDialog = 135;
constexpr int kInsertObject = 1341;
constexpr int kInsertBackground = 1344;

}  // namespace

void AnswerRgbaChoice(script::HeadlessDesktop& desktop, RgbaAnswer answer) {
    desktop.HandleDialog(kRgbaDialog, [answer](CDialog& dialog) {
        script::DialogDriver user(dialog);
        if (answer != RgbaAnswer::kCancel)
            user.Check(answer == RgbaAnswer::kObject ? kInsertObject : kInsertBackground);
        user.Press(answer == RgbaAnswer::kCancel ? IDCANCEL : IDOK);
    });
}

void EnterDirectories(script::DialogDriver& user, const std::string& message_directory,
                      const std::string& font_directory) {
    user.Type(kMessageDirBox, message_directory);
    user.Type(kFontDirBox, font_directory);
}

void StoreSkipWarnings(bool skip) {
    seam::GetSettingsStore().SetProfileInt("ZELFNTSaveOptions", "SkipWarnings", skip ? 1 : 0);
}

}  // namespace zel::run
