#include "host/user_desktop.h"

#include "host/native_path.h"
#include "platform/system/commands.h"

namespace zel::host {

namespace {

int AnswerId(BoxAnswer answer) noexcept {
    switch (answer) {
        case BoxAnswer::kYes:
            return IDYES;
        case BoxAnswer::kNo:
            return IDNO;
        case BoxAnswer::kCancel:
            return IDCANCEL;
    }
    return IDNO;
}

}  // namespace

UserDesktop::UserDesktop(BoxAnswer answer, const std::optional<std::string>& browse,
                         std::span<HostObserver* const> observers)
    : m_previous(seam::SetDesktop(this)) {
    SetYesNoAnswer(AnswerId(answer));
    AnswerFileDialogs(
        [path = browse ? std::optional(AbsolutePath(*browse)) : std::nullopt](const FileDialog&) { return path; });
    ObserveBoxes([observers](const Box& box) {
        for (HostObserver* observer : observers) observer->OnBox(box);
    });
    ObserveFileDialogs([observers](const FileDialog& dialog) {
        for (HostObserver* observer : observers) observer->OnFileDialog(dialog);
    });
}

}  // namespace zel::host
