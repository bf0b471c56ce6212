#pragma once

#include <span>

#include "programs/cli/arguments.h"

namespace zel::cli {

/// A command of the program: its name, and what adds it to the command line.
struct NamedCommand {
    const char* name;
    void (*add)(CLI::App& app, CommandRun& run);
};

/// Takes the command line apart and runs the command that it names. Only this one's options are set up, unless none
/// of them is named.
/// @return the exit code; errors have been told.
int RunProgram(int argc, char** argv, std::span<const NamedCommand> commands);

/// Entry of the library that holds all commands, which the program loads unless it has the command itself.
inline constexpr char kCommandLibraryEntry[] = "RunAnyCommand";
using RunAnyCommandFunction = int (*)(int argc, char** argv);

}  // namespace zel::cli
