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
    kSilent,  ///< no dialog, Skip Warnings on.
    kDialog,  ///< the main dialog, driven as a user would, with warnings.
};

/// One import. Paths are this system's; a relative one is taken from the current directory.
struct ImportRequest {
    std::string message;
    std::optional<std::string> fonts;  ///< without it: MACHINE beside the message directory.
    ImportMode mode = ImportMode::kSilent;
    host::BoxAnswer box_answer = host::BoxAnswer::kNo;
    std::optional<std::string> browse;  ///< file that the file dialog gives; without it the dialog is cancelled.
    RgbaAnswer rgba = RgbaAnswer::kObject;
    host::HostOptions host;  ///< lines, options and the directory of the name lists.
};

struct ImportOutcome {
    std::optional<int> status;             ///< m_iStatus; empty when the dialog was never made or an exception passed.
    std::optional<std::string> exception;  ///< text of an exception that left the module.
    std::optional<document::MessageRecord> message;  ///< what arrived, also of an RGBA file; empty when nothing did.
    std::vector<script::HeadlessDesktop::Box> boxes;
    std::string next_id;
    int y_offset = 0;
    std::vector<std::string> order_breaches;  ///< calls out of place; empty is as it should be.
    std::string failure;  ///< one line that names the file and the reason; empty when all went well.

    bool Done() const noexcept { return failure.empty(); }
};

/// Runs the module inside a host of its own and a desktop without a screen; both are gone when it returns. The settings
/// are those of the current SettingsStore.
/// @param observers  hear what happens; not owned, none of them null.
/// What can't be begun (a maps directory that is too long) is told in `failure`; nothing is thrown but std::bad_alloc.
ImportOutcome RunImport(const ImportRequest& request, std::span<host::HostObserver* const> observers = {});

}  // namespace zel::run
