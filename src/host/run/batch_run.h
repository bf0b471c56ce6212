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

/// A batch over the messages of a disk, which is a directory that contains MESSAGES and MACHINE. Paths are this
/// system's.
struct BatchRequest {
    std::string disk;
    /// Run in order, in one main dialog.
    std::vector<host::NumberRange> ranges;
    /// Font directory; empty: MACHINE on the disk.
    std::optional<std::string> fonts;
    /// Skip Warnings off.
    bool warnings = false;
    host::BoxAnswer box_answer = host::BoxAnswer::kNo;
    std::optional<std::string> browse;
    RgbaAnswer rgba = RgbaAnswer::kObject;
    host::HostOptions host;
    /// Called wherever the module checks the ESC key; true stops the batch. May be empty.
    std::function<bool()> stop;
};

enum class BatchEnd {
    kCompleted,
    /// `stop` returned true; the message under way is not recorded.
    kStopped,
    /// The module did not begin a range; `failure` contains the reason.
    kRefused,
};

struct BatchOutcome {
    BatchEnd end = BatchEnd::kCompleted;
    /// m_iStatus of the last import.
    std::optional<int> status;
    /// Text of the first exception that left the module.
    std::optional<std::string> exception;
    std::string next_id;
    int y_offset = 0;
    std::vector<std::string> order_breaches;
    /// One line; empty unless the run was refused.
    std::string failure;
};

/// Runs the module's batch dialog inside its own host and a desktop without a screen. The observers receive the result
/// for each number (OnBatchItem). An exception that leaves the module fails the number under way and is reported to the
/// observers; the run continues after that number.
/// @param observers  not owned, none of them null.
BatchOutcome RunBatch(const BatchRequest& request, std::span<host::HostObserver* const> observers);

/// This system's path of a disk's messages.
std::string MessageDirectoryOf(const std::string& disk);
/// Absolute path of the directory of the font files: the requested one, or MACHINE on the disk.
std::string FontDirectoryOf(const BatchRequest& request);

/// Why no message of a disk can be imported, in one line: the disk, its messages or the font directory are missing or
/// can't be read. Empty if they can. RunBatch can be called all the same; it then fails each number.
std::string DiskError(const BatchRequest& request);

}  // namespace zel::run
