#pragma once

#include <string>

namespace zel::host {

/// A path of this system made absolute by putting the current directory in front, else as it is. Nothing else is
/// changed: neither dots nor links nor doubled separators are resolved.
std::string AbsolutePath(const std::string& path);

/// A path in the module's form, cut at its last backslash. A path directly in the root keeps the separator as its
/// directory.
struct ModulePathParts {
    std::string directory;
    std::string name;
};
ModulePathParts SplitModulePath(const std::string& path);

/// The directory MACHINE beside a message directory, both in the module's form.
std::string MachineDirectory(const std::string& message_directory);

}  // namespace zel::host
