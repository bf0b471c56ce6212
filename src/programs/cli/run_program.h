#pragma once

#include <span>

#include "programs/cli/command.h"

namespace zel::cli {

/// A command of the program.
struct NamedCommand {
    const char* name;
    void (*add)(CLI::App& app, CommandRun& run);
};

/// Parses the command line and runs the selected command. To save time, the options of other commands are not set up.
/// @return the exit code; errors have been printed.
int RunProgram(int argc, char** argv, std::span<const NamedCommand> commands);

/// The entry point of the library with all commands. The program loads it unless it contains the command itself.
inline constexpr char kCommandLibraryEntry[] = "RunAnyCommand";
using RunAnyCommandFunction = int (*)(int argc, char** argv);

}  // namespace zel::cli
