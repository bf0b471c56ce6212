#include "host/run/dialog_script.h"

#include "module/contract/dialog_ids.h"
#include "module/contract/stored_settings.h"
#include "platform/seam/settings_store.h"

namespace zel::run {

void AnswerRgbaChoice(script::HeadlessDesktop& desktop, RgbaAnswer answer) {
    desktop.HandleDialog(kRgbaDialog, [answer](CDialog& dialog) {
        script::DialogDriver user(dialog);
        if (answer != RgbaAnswer::kCancel)
            user.Check(answer == RgbaAnswer::kObject ? RgbaControl::kObjectRadio : RgbaControl::kBackgroundRadio);
        user.Press(answer == RgbaAnswer::kCancel ? IDCANCEL : IDOK);
    });
}

void EnterDirectories(script::DialogDriver& user, const std::string& message_directory,
                      const std::string& font_directory) {
    user.Type(ImportControl::kMessageDirBox, message_directory);
    user.Type(ImportControl::kFontDirBox, font_directory);
}

void StoreSkipWarnings(bool skip) {
    seam::GetSettingsStore().SetProfileInt(stored::kFontSection, stored::kSkipWarnings, skip ? 1 : 0);
}

}  // namespace zel::run
