#pragma once

#include <functional>
#include <string>

#include "host/library/recording.h"
#include "host/reference_host.h"

class FtpService;

namespace zel::desktop {

class ModuleDesktop;

/// Who hears of an import by the module's own dialog.
struct DialogImportTold {
    std::function<void(const library::RecordingKey&)> recorded;  ///< on another thread, each time something is kept.
    std::function<void(const std::string&)> failed;  ///< on another thread, when nothing can be recorded any more.
};

struct DialogImportOutcome {
    int recorded = 0;
    std::string failure;  ///< why not everything is recorded, or why the module stopped; empty when all went well.
};

/// Runs the module's import dialog until the user closes it, and records each message that arrives: in a batch those
/// that the module tells to record, else every one.
/// @param service  answers the dialog of the FTP copy; null for nobody.
/// @throws LibraryError, HostError when it can't begin.
DialogImportOutcome ImportByDialog(const std::string& library, const ModuleDesktop& desktop,
                                   const host::HostOptions& options, host::FtpService* service,
                                   const DialogImportTold& told);

}  // namespace zel::desktop
