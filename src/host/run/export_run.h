#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/host_observer.h"
#include "host/run/batch_run.h"

namespace zel::run {

/// A batch export of the host's messages.
struct ExportRequest {
    host::NumberRange range;
    /// Export path, this system's.
    std::string directory;
    /// Not owned, not null.
    host::ExportService* service = nullptr;
    /// Flag of the export window.
    bool flag = false;
    /// Called wherever the module checks the ESC key; true stops the export. May be empty.
    std::function<bool()> stop;
};

struct ExportOutcome {
    BatchEnd end = BatchEnd::kCompleted;
    std::vector<std::string> order_breaches;
    /// One line; empty unless the run was refused.
    std::string failure;
};

/// Runs the module's batch export inside its own host and a desktop without a screen. Exceptions of the service pass.
/// @param observers  not owned, none of them null.
ExportOutcome RunExport(const ExportRequest& request, std::span<host::HostObserver* const> observers);

}  // namespace zel::run
