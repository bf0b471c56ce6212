#pragma once

#include <filesystem>
#include <string>

namespace zel::limits {

/// What one run of the command took.
struct Cost {
    /// Of the processor, in the program and in the system; waiting isn't counted, so a busy machine changes it little.
    double seconds = 0;
    /// The largest resident size, in MiB. Not below that of the measuring process when the command starts.
    double mebibytes = 0;
    /// -1 when a signal ended the command.
    int exit_code = -1;
};

/// Runs a command with its own settings and without any output on the terminal.
/// @param line          of shell, the program and its arguments.
/// @param directory     becomes the current directory.
/// @param most_seconds  of processor time, after which the command is ended by a signal.
/// @throws std::system_error when no process can be started.
Cost MeasureCommand(const std::string& line, const std::filesystem::path& directory, unsigned most_seconds);

}  // namespace zel::limits
