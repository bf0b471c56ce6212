#pragma once

namespace zel::host {

/// The window that a message was sent to.
enum class Target { kHost, kExport, kMain };

}  // namespace zel::host
