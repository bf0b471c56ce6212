#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zel::layers {

/// One line for each function that a header X.h below `root` declares and a source other than X.cpp or X_*.cpp of the
/// same folder defines. Headers of the folders `exempt` (relative to `root`, with what is below them) are not checked.
/// Reads the sources with universal-ctags; a line that begins with "ctags" says why that failed.
std::vector<std::string> CheckDeclarations(const std::filesystem::path& root, const std::vector<std::string>& exempt);

}  // namespace zel::layers
