#pragma once

#include <chrono>

namespace zel::cli {

/// Least time between two drawings of a line of progress: often enough to look steady, seldom enough to cost nothing.
constexpr std::chrono::milliseconds kBetweenDrawings{100};

}  // namespace zel::cli
