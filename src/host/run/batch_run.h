#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/host_observer.h"
#include "host/reference_host.h"
#include "host/run/dialog_script.h"
#include "host/run/range_entry.h"
#include "host/user_desktop.h"

namespace zel::run {

/// A batch over the messages of a disk: a directory with MESSAGES and MACHINE in it. Paths are this system's.
struct BatchRequest {
    std::string disk;
    std::vector<host::NumberRange> ranges;  ///< run one after the other, in one main dialog.
    std::optional<std::string> fonts;       ///< without it: MACHINE on the disk.
    bool warnings = false;                  ///< Skip Warnings off.
    host::BoxAnswer box_answer = host::BoxAnswer::kNo;
    std::optional<std::string> browse;
    RgbaAnswer rgba = RgbaAnswer::kObject;
    host::HostOptions host;
    /// Asked wherever the module asks for the ESC key; true ends the run. May be empty.
    std::function<bool()> stop;
};

enum class BatchEnd {
    kCompleted,
    kStopped,  ///< `stop` said so; what was under way isn't recorded.
    kRefused,  ///< the module didn't begin; `failure` tells why.
};

struct BatchOutcome {
    BatchEnd end = BatchEnd::kCompleted;
    std::optional<int> status;             ///< m_iStatus of the last import.
    std::optional<std::string> exception;  ///< text of the first exception that left the module.
    std::string next_id;
    int y_offset = 0;
    std::vector<std::string> order_breaches;
    std::string failure;  ///< one line; empty unless the run was refused.
};

/// Runs the module's batch dialog inside a host of its own and a desktop without a screen. What becomes of each number
/// is told to the observers (OnBatchItem). An exception that leaves the module fails the number under way; the
/// observers hear of it, and the run goes on behind that number.
/// @param observers  not owned, none of them null.
BatchOutcome RunBatch(const BatchRequest& request, std::span<host::HostObserver* const> observers);

/// This system's path of a disk's messages.
std::string MessageDirectoryOf(const std::string& disk);

}  // namespace zel::run
