#pragma once

#include <string>

namespace zel::cli {

/// A text as a user can paste it into a shell, quoted if necessary.
std::string ShellQuoted(const std::string& text);

}  // namespace zel::cli
