#include "host/run/export_run.h"

#include "host/native_path.h"
#include "host/module_call.h"
#include "host/run/range_entry.h"
#include "module/contract/zel_trans_export.h"
#include "platform/system/files.h"
#include "module/tools/zel_trans_batch.h"

ExportOutcome RunExport(const ExportRequest& request, std::span<HostObserver* const> observers) {
    ExportOutcome outcome;
    UserDesktop desktop(BoxAnswer::kNo, std::nullopt, observers);
    HostOptions options;
    options.exports = request.service;
    options.export_flag = request.flag;
    ReferenceHost host(options);
    for (HostObserver* observer : observers) host.AddObserver(observer);
    bool stopped = false;
    desktop.AnswerKeys(
        [&](int key) { return key == VK_ESCAPE && (stopped = stopped || (request.stop && request.stop())); });
    desktop.HandleDialog(kBatchDialog, [&](CDialog& dialog) {
        if (const auto refusal = EnterRange(desktop, dialog, request.range)) {
            outcome.end = BatchEnd::kRefused;
            outcome.failure = *refusal;
        }
    });
    const std::optional<std::string> exception = CallInHost(host, [&] {
        CString path(ModulePath(AbsolutePath(request.directory)).c_str());
        CZelTransExport().ZelBatchExport(host.HostWindow(), path, host.ExportWindow());
    });
    if (exception) {
        outcome.end = BatchEnd::kRefused;
        outcome.failure = *exception;
    } else if (stopped) {
        outcome.end = BatchEnd::kStopped;
    }
    outcome.order_breaches = host.Breaches();
    const RunEnd end = EndOf(Road::kExport, std::nullopt);
    for (HostObserver* observer : observers) {
        if (exception) {
            observer->OnException(*exception);
        } else {
            observer->OnEnd(end);
        }
    }
    return outcome;
}
