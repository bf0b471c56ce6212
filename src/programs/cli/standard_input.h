#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zel::cli {

/// What the texts of the program call a file that was given as "-".
inline constexpr char kStandardInput[] = "standard input";

/// Whether a file is standard input.
inline bool IsStandardInput(const std::string& file) {
    return file == "-";
}

/// Reads standard input up to its end, at most inspect::kLargestFile bytes.
/// @throws std::runtime_error with the reason, without a name.
std::vector<std::uint8_t> ReadStandardInput();

}  // namespace zel::cli
