#pragma once

#include <optional>
#include <string>

namespace zel::run {

/// The paths of an import in the module's form.
struct ImportPaths {
    std::string message;
    std::string message_directory;
    /// Last part of the message's path.
    std::string id;
    /// The requested one, or MACHINE beside the message directory.
    std::string font_directory;
};

/// @param message  this system's path of the message file; a relative one is taken from the current directory.
/// @param fonts    this system's font directory, if one is requested.
ImportPaths ImportPathsOf(const std::string& message, const std::optional<std::string>& fonts);

/// The message file that the module opens for an id, in this system's form: for 12 or .0012 also the file .0012 or
/// 0012. Empty if no such name exists; a name that exists need not be a file.
std::string FindMessageFile(const ImportPaths& paths);

}  // namespace zel::run
