#pragma once

#include <string>

namespace CLI {
class App;
}

namespace zel::cli {

/// Sets up what the program and all its commands have: name, description, help and version.
/// @param version  what --version prints.
void AddProgramOptions(CLI::App& app, std::string (*version)());

}  // namespace zel::cli
