#pragma once

#include <functional>
#include <optional>
#include <string>

#include "host/host_observer.h"

namespace zel::host {

class ReferenceHost;

/// Calls the module and sees to it that what it leaves behind is taken back, whichever way it ends.
/// @return text of an exception of the module's that left it; anything else that is thrown passes.
std::optional<std::string> CallInHost(ReferenceHost& host, const std::function<void()>& call);

/// How a run has ended, with what the module keeps from call to call.
RunEnd EndOf(RunKind kind, std::optional<int> status);

}  // namespace zel::host
