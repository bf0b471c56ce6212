#pragma once

namespace CLI {
class App;
}

namespace zel::cli {

/// Sets up what the program and all its commands have: name, description, help and version.
void AddProgramOptions(CLI::App& app);

}  // namespace zel::cli
