#pragma once

#include <functional>
#include <string>

#include "host/library/recording.h"
#include "host/reference_host.h"
#include "programs/desktop/work/message_warnings.h"

namespace zel::desktop {

class ModuleDesktop;

/// Called on another thread during an import by the module's dialog.
struct DialogImportCallbacks {
    /// A message is in the library.
    std::function<void(const library::RecordingKey&)> recorded;
    /// Once, with the reason: nothing more can be recorded.
    std::function<void(const std::string&)> failed;
};

struct DialogImportOutcome {
    int recorded = 0;
    /// Why not every message is recorded, or why the module stopped; empty on success.
    std::string failure;
    /// Of the recorded messages that have any.
    std::vector<MessageWarnings> warnings;
};

/// Runs the module's import dialog until the user closes it, and records each message that arrives; in a batch, those
/// that the module asks the host to record.
/// @param library  file, which exists.
/// @param service  answers the FTP copy dialog; may be null.
/// @throws LibraryError, HostError when the import cannot start.
DialogImportOutcome ImportByDialog(const std::string& library, const ModuleDesktop& desktop,
                                   const host::HostOptions& options, host::FtpService* service,
                                   const DialogImportCallbacks& callbacks);

}  // namespace zel::desktop
