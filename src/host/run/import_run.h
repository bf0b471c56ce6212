#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/document/message_record.h"
#include "host/host_observer.h"
#include "host/reference_host.h"
#include "host/run/dialog_script.h"
#include "host/user_desktop.h"

namespace zel::run {

enum class ImportMode {
    /// No dialog, Skip Warnings on.
    kSilent,
    /// The main dialog, operated as by a user, with warnings.
    kDialog,
};

/// One import. Paths are this system's; a relative one is taken from the current directory.
struct ImportRequest {
    std::string message;
    /// Font directory; empty: MACHINE beside the message directory.
    std::optional<std::string> fonts;
    ImportMode mode = ImportMode::kSilent;
    host::BoxAnswer box_answer = host::BoxAnswer::kNo;
    /// File chosen in the file dialog; empty: the dialog is cancelled.
    std::optional<std::string> browse;
    RgbaAnswer rgba = RgbaAnswer::kObject;
    host::HostOptions host;
};

struct ImportOutcome {
    /// m_iStatus; empty when there was no dialog, or after an exception.
    std::optional<int> status;
    /// Text of an exception that left the module.
    std::optional<std::string> exception;
    /// What the host received, also of an RGBA file; empty without a completed import.
    std::optional<document::MessageRecord> message;
    std::vector<script::HeadlessDesktop::Box> boxes;
    std::string next_id;
    int y_offset = 0;
    /// Violations of the contract's order.
    std::vector<std::string> order_breaches;
    /// One line with the file's name and the reason; empty after success.
    std::string failure;

    bool Done() const noexcept { return failure.empty(); }
};

/// Runs the module inside its own host and a desktop without a screen, with the settings of the current SettingsStore.
/// Failures to start (a maps directory that is too long) are reported in `failure` too; throws only std::bad_alloc.
/// @param observers  not owned, none of them null.
ImportOutcome RunImport(const ImportRequest& request, std::span<host::HostObserver* const> observers = {});

}  // namespace zel::run
