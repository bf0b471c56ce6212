#include "programs/cli/run_observers.h"

namespace zel::cli {

RunObservers::RunObservers(const std::optional<std::string>& trace, host::TracePixels pixels) {
    if (!trace) return;
    m_trace.emplace(*trace, pixels);
    Add(m_trace->Observer());
}

void RunObservers::CommitTrace() {
    if (m_trace) m_trace->Commit();
}

}  // namespace zel::cli
