#include "host/run/import_run.h"

#include "host/module_call.h"
#include "host/run/failure_text.h"
#include "host/run/import_paths.h"
#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/contract/zel_trans_export.h"

namespace zel::run {

namespace {

/// What a user does in the main dialog to import one message.
void DriveMainDialog(CDialog& dialog, const ImportPaths& paths) {
    script::DialogDriver user(dialog);
    EnterDirectories(user, paths.message_directory, paths.font_directory);
    user.Type(ImportControl::kMessageIdEdit, paths.id);
    user.Press(ImportControl::kReadButton);
    user.Close();
}

void DriveDialogs(script::HeadlessDesktop& desktop, const ImportRequest& request, const ImportPaths& paths) {
    desktop.HandleDialog(kImportDialog, [&paths](CDialog& dialog) { DriveMainDialog(dialog, paths); });
    AnswerRgbaChoice(desktop, request.rgba);
}

void CallModule(const ImportRequest& request, const ImportPaths& paths, host::ReferenceHost& host) {
    CZelTransExport module;
    if (request.mode == ImportMode::kDialog) {
        StoreSkipWarnings(false);
        module.ZelTranslation(host.HostWindow());
        return;
    }
    CString message(paths.message.c_str());
    CString fonts(request.fonts ? paths.font_directory.c_str() : "");
    module.ReadZelmaraMessage(host.HostWindow(), message, fonts);
}

}  // namespace

ImportOutcome RunImport(const ImportRequest& request, std::span<host::HostObserver* const> observers) {
    ImportOutcome outcome;
    const ImportPaths paths = ImportPathsOf(request.message, request.fonts);
    host::UserDesktop desktop(request.box_answer, request.browse, observers);
    try {
        host::ReferenceHost host(request.host);
        for (host::HostObserver* observer : observers) host.AddObserver(observer);
        DriveDialogs(desktop, request, paths);
        outcome.exception = host::CallInHost(host, [&] { CallModule(request, paths, host); });
        if (!outcome.exception) outcome.status = host.Status();
        outcome.message = host.TakeMessage();
        outcome.order_breaches = host.Breaches();
    } catch (const host::HostError& error) {
        outcome.failure = error.what();
        return outcome;
    }
    outcome.boxes = desktop.Boxes();
    const host::RunEnd end = host::RunEndOf(host::RunKind::kImport, outcome.status);
    outcome.next_id = end.next_id;
    outcome.y_offset = end.y_offset;
    outcome.failure = DescribeFailure(request, paths, outcome);
    host::ReportEnd(observers, outcome.exception, end);
    return outcome;
}

}  // namespace zel::run
