#include "host/run/export_run.h"

#include "host/module_call.h"
#include "host/native_path.h"
#include "host/run/range_entry.h"
#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_export.h"
#include "platform/system/files.h"

namespace zel::run {

namespace {

/// Answers the batch dialog and the checks of the ESC key.
void DriveDialogs(host::UserDesktop& desktop, const ExportRequest& request, ExportOutcome& outcome, bool& stopped) {
    desktop.AnswerKeys(
        [&](int key) { return key == VK_ESCAPE && (stopped = stopped || (request.stop && request.stop())); });
    desktop.HandleDialog(kBatchDialog, [&](CDialog& dialog) {
        if (const auto refusal = EnterRange(desktop, dialog, request.range)) {
            outcome.end = BatchEnd::kRefused;
            outcome.failure = *refusal;
        }
    });
}

}  // namespace

ExportOutcome RunExport(const ExportRequest& request, std::span<host::HostObserver* const> observers) {
    ExportOutcome outcome;
    bool stopped = false;
    host::UserDesktop desktop(host::BoxAnswer::kNo, std::nullopt, observers);
    host::ReferenceHost host({.exports = request.service, .export_flag = request.flag});
    for (host::HostObserver* observer : observers) host.AddObserver(observer);
    DriveDialogs(desktop, request, outcome, stopped);
    const std::optional<std::string> exception = host::CallInHost(host, [&] {
        CString path(system::ModulePath(host::AbsolutePath(request.directory)).c_str());
        CZelTransExport().ZelBatchExport(host.HostWindow(), path, host.ExportWindow());
    });
    if (exception) {
        outcome.end = BatchEnd::kRefused;
        outcome.failure = *exception;
    } else if (stopped) {
        outcome.end = BatchEnd::kStopped;
    }
    outcome.order_breaches = host.Breaches();
    host::ReportEnd(observers, exception, host::RunEndOf(host::RunKind::kExport, std::nullopt));
    return outcome;
}

}  // namespace zel::run
