#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "programs/cli/trace_output.h"
#include "programs/cli/warnings_printer.h"

namespace zel::cli {

/// The observers of one run of the module: those that --trace and --warnings request, and the command's own.
class RunObservers {
  public:
    /// @param trace  of --trace.
    /// @throws CommandError if the trace cannot be written.
    explicit RunObservers(const std::optional<std::string>& trace, host::TracePixels pixels = host::TracePixels::kNo);
    RunObservers(const RunObservers&) = delete;
    RunObservers& operator=(const RunObservers&) = delete;

    /// Prints each box on standard error.
    void PrintWarnings() { Add(m_warnings); }
    /// @param observer  not owned.
    void Add(host::HostObserver& observer) { m_observers.push_back(&observer); }

    std::span<host::HostObserver* const> All() const noexcept { return m_observers; }

    /// Completes the trace.
    /// @throws CommandError if not all of it could be written.
    void CommitTrace();

  private:
    std::optional<TraceOutput> m_trace;
    WarningsPrinter m_warnings;
    std::vector<host::HostObserver*> m_observers;
};

}  // namespace zel::cli
