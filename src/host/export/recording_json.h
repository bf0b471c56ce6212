#pragma once

#include <nlohmann/json_fwd.hpp>

#include "host/library/recording.h"

namespace zel::exporter {

/// What a library knows of a recording, without its picture but with its document; described in docs/json.md.
/// @throws std::runtime_error for a document that document::ParseDocument rejects.
nlohmann::ordered_json RecordingJson(const library::Recording& recording);

/// "message"; "object" or "background" for an RGBA picture.
const char* KindName(library::RecordingKind kind) noexcept;

}  // namespace zel::exporter
