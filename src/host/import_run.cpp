#include "host/import_run.h"

#include <memory>

#include "dialog/zel_trans_dlg.h"
#include "host/failure_text.h"
#include "host/module_text.h"
#include "host/native_path.h"
#include "pipeline/zel_trans_export.h"
#include "platform/framework/exceptions.h"
#include "platform/settings_store.h"
#include "platform/system/files.h"

namespace {

/// Controls of the choice for an RGBA file.
constexpr UINT kRgbaDialog = 135;
constexpr int kInsertObject = 1341;
constexpr int kInsertBackground = 1344;

/// Where the module keeps its Skip Warnings setting.
constexpr char kSettingsSection[] = "ZELFNTSaveOptions";
constexpr char kSkipWarnings[] = "SkipWarnings";

/// Makes a desktop the current one for as long as it lives.
class DesktopScope {
  public:
    explicit DesktopScope(Desktop& desktop) : m_previous(SetDesktop(&desktop)) {}
    ~DesktopScope() { SetDesktop(m_previous); }
    DesktopScope(const DesktopScope&) = delete;
    DesktopScope& operator=(const DesktopScope&) = delete;

  private:
    Desktop* m_previous;
};

/// Reaches the id that the next dialog starts with, which is the dialog's own affair; no object is ever made.
class NextMessage : public CZelTransDlg {
  public:
    static std::string Id() { return M_sNextMessage.GetString(); }
};

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

void AnswerRgba(CDialog& dialog, RgbaAnswer answer) {
    DialogDriver user(dialog);
    if (answer != RgbaAnswer::kCancel) user.Check(answer == RgbaAnswer::kObject ? kInsertObject : kInsertBackground);
    user.Press(answer == RgbaAnswer::kCancel ? IDCANCEL : IDOK);
}

/// What a user does in the main dialog to import one message.
void DriveMainDialog(CDialog& dialog, const ImportPaths& paths) {
    DialogDriver user(dialog);
    user.Type(kMessageDirBox, paths.message_directory);
    user.Type(kFontDirBox, paths.font_directory);
    user.Type(kMessageIdEdit, paths.id);
    user.Press(kReadButton);
    user.Close();
}

void SetUpUser(HeadlessDesktop& desktop, const ImportRequest& request, const ImportPaths& paths,
               std::span<HostObserver* const> observers) {
    desktop.SetYesNoAnswer(AnswerId(request.box_answer));
    desktop.AnswerFileDialogs([&request](const HeadlessDesktop::FileDialog&) {
        return request.browse ? std::optional(AbsolutePath(*request.browse)) : std::nullopt;
    });
    desktop.ObserveBoxes([observers](const HeadlessDesktop::Box& box) {
        for (HostObserver* observer : observers) observer->OnBox(box);
    });
    desktop.ObserveFileDialogs([observers](const HeadlessDesktop::FileDialog& dialog) {
        for (HostObserver* observer : observers) observer->OnFileDialog(dialog);
    });
    desktop.HandleDialog(kImportDialog, [&paths](CDialog& dialog) { DriveMainDialog(dialog, paths); });
    desktop.HandleDialog(kRgbaDialog, [answer = request.rgba](CDialog& dialog) { AnswerRgba(dialog, answer); });
}

void CallModule(const ImportRequest& request, const ImportPaths& paths, ReferenceHost& host) {
    CZelTransExport module;
    if (request.road == ImportRoad::kDialog) {
        GetSettingsStore().SetProfileInt(kSettingsSection, kSkipWarnings, 0);
        module.ZelTranslation(host.HostWindow());
        return;
    }
    CString message(paths.message.c_str());
    CString fonts(request.fonts ? paths.font_directory.c_str() : "");
    module.ReadZelmaraMessage(host.HostWindow(), message, fonts);
}

/// Calls the module and sees to it that what it leaves behind is taken back, whichever way it ends.
void RunInHost(const ImportRequest& request, const ImportPaths& paths, ReferenceHost& host, ImportOutcome& outcome) {
    try {
        CallModule(request, paths, host);
        host.EndCall(HowCallEnded::kReturned);
        outcome.status = host.Status();
    } catch (CException* error) {
        host.EndCall(HowCallEnded::kException);
        outcome.exception = TakeText(error);
    } catch (...) {
        host.EndCall(HowCallEnded::kException);
        throw;
    }
}

}  // namespace

ImportOutcome RunImport(const ImportRequest& request, std::span<HostObserver* const> observers) {
    ImportOutcome outcome;
    const ImportPaths paths = PathsOf(request);
    HeadlessDesktop desktop;
    const DesktopScope scope(desktop);
    try {
        ReferenceHost host(request.host);
        for (HostObserver* observer : observers) host.AddObserver(observer);
        SetUpUser(desktop, request, paths, observers);
        RunInHost(request, paths, host, outcome);
        outcome.message = host.TakeMessage();
        outcome.order_breaches = host.Breaches();
        outcome.glyph_failures = host.GlyphFailures();
    } catch (const HostError& error) {
        outcome.failure = error.what();
        return outcome;
    }
    outcome.boxes = desktop.Boxes();
    outcome.next_id = NextMessage::Id();
    outcome.y_offset = ZelYOffset();
    outcome.failure = DescribeFailure(request, paths, outcome);
    for (HostObserver* observer : observers) {
        if (outcome.exception) {
            observer->OnException(*outcome.exception);
        } else {
            observer->OnEnd({Road::kImport, outcome.status, outcome.next_id, outcome.y_offset});
        }
    }
    return outcome;
}
