#pragma once

#include <cstddef>

namespace zel::cli {

/// The width of the terminal in characters: that of the environment's COLUMNS, else that of standard output's terminal,
/// else 80.
std::size_t TerminalWidth();

}  // namespace zel::cli
