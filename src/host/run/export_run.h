#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/host_observer.h"
#include "host/run/batch_run.h"

namespace zel::run {

/// A batch export of what the host holds.
struct ExportRequest {
    host::NumberRange range;                 ///< as it is typed into the batch dialog.
    std::string directory;                   ///< export path, this system's.
    host::ExportService* service = nullptr;  ///< not owned, not null.
    bool flag = false;                       ///< of the export window.
    std::function<bool()> stop;              ///< asked wherever the module asks for the ESC key; may be empty.
};

struct ExportOutcome {
    BatchEnd end = BatchEnd::kCompleted;
    std::vector<std::string> order_breaches;
    std::string failure;  ///< one line; empty unless the run was refused.
};

/// Runs the module's batch export inside a host of its own and a desktop without a screen.
/// @param observers  not owned, none of them null.
/// What the service throws passes.
ExportOutcome RunExport(const ExportRequest& request, std::span<host::HostObserver* const> observers);

}  // namespace zel::run
