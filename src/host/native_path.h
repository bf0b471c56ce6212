#pragma once

#include <string>

namespace zel::host {

/// A path of this system, made absolute by putting the current directory in front of it. Dots, links and doubled
/// separators are not resolved.
std::string AbsolutePath(const std::string& path);

/// A path in the module's form, split at its last backslash. The directory of a path in the root is the separator.
struct ModulePathParts {
    std::string directory;
    std::string name;
};
ModulePathParts SplitModulePath(const std::string& path);

/// The directory MACHINE beside a message directory, both in the module's form.
std::string MachineDirectory(const std::string& message_directory);

}  // namespace zel::host
