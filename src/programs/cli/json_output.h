#pragma once

#include <string>

#include <nlohmann/json_fwd.hpp>

namespace zel::cli {

// What --json prints; the forms are described in docs/json.md.

/// A value in one line without a line end, in ASCII alone, so that nothing in it controls a terminal. Bytes of a text
/// that aren't valid UTF-8 become U+FFFD.
std::string JsonText(const nlohmann::ordered_json& value);

/// Prints a value in one line on standard output, at once.
void PrintJson(const nlohmann::ordered_json& value);

/// The text, or null for an empty one.
nlohmann::ordered_json TextOrNull(const std::string& text);

}  // namespace zel::cli
