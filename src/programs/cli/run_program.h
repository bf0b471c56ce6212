#pragma once

#include <span>
#include <string>

#include "programs/cli/command.h"

namespace zel::cli {

/// A command of the program.
struct NamedCommand {
    const char* name;
    void (*add)(CLI::App& app, CommandRun& run);
};

/// Lets the program end with its usual error when memory runs out where an exception can't pass.
void PrepareForFailure() noexcept;
/// Prints the exception that is being handled as the program's error.
/// @return the exit code 1.
int ReportException() noexcept;

/// Does work that may fail.
/// @return the exit code: that of `work`, or 1 after an exception, which is printed.
template <class Work>
int ReportFailure(Work work) noexcept {
    PrepareForFailure();
    try {
        return work();
    } catch (...) {
        return ReportException();
    }
}

/// Parses the command line and runs the selected command. To save time, the options of other commands are not set up.
/// @param version  what --version prints.
/// @return the exit code; errors have been printed.
int RunProgram(int argc, char** argv, std::span<const NamedCommand> commands, std::string (*version)());

/// The entry point of the library with all commands. The program loads it unless it contains the command itself.
inline constexpr char kCommandLibraryEntry[] = "RunAnyCommand";
using RunAnyCommandFunction = int (*)(int argc, char** argv);

}  // namespace zel::cli
