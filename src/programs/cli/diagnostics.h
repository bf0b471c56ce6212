#pragma once

#include <string>

namespace zel::cli {

/// Prints "zeltrans: TEXT" on standard error, in one line.
void PrintError(const std::string& text);

/// Prints "note: TEXT" on standard error, in one line: information about a command that succeeds all the same.
void PrintNote(const std::string& text);

}  // namespace zel::cli
