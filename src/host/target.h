#pragma once

/// The window that a message was sent to.
enum class Target { kHost, kExport, kMain };
