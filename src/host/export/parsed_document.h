#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace zel::exporter {

/// A recording's document.
/// @return null for an empty text.
/// @throws std::runtime_error for a text that is no JSON object, or one nested deeper than any message.
nlohmann::ordered_json ParsedDocument(const std::string& text);

}  // namespace zel::exporter
