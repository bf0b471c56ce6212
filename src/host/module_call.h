#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>

#include "host/host_observer.h"

namespace zel::host {

class ReferenceHost;

/// Calls the module and has the host release what the call leaves, however it ends.
/// @return text of a CException that left the module; empty without one. Other exceptions pass.
std::optional<std::string> CallInHost(ReferenceHost& host, const std::function<void()>& call);

/// The end of a run, with the values that the module keeps from call to call.
/// @param status  m_iStatus of the last import, if there was one.
RunEnd RunEndOf(RunKind kind, std::optional<int> status);

/// Reports the end of a run: the text of the exception that ended it, or else `end`.
void ReportEnd(std::span<HostObserver* const> observers, const std::optional<std::string>& exception,
               const RunEnd& end);

}  // namespace zel::host
