#include "programs/cli/run_program.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>
#include <string_view>

#include <CLI/CLI.hpp>
#include <unistd.h>

#include "base/terminal_text.h"
#include "base/whole_file.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/help_formatter.h"

namespace zel::cli {

namespace {

ExitCode PrintParseError(const CLI::App& app, const CLI::ParseError& error) {
    if (error.get_name() == "RequiredError" && app.get_subcommands().empty() && app.remaining_size() != 0) {
        std::cerr << "Unknown command \"" << base::TerminalText(app.remaining().front())
                  << "\"\nRun with --help for more information.\n";
        return ExitCode::kWrongArguments;
    }
    // CLI11 reports --help and --version in this way too, and prints them.
    std::ostringstream errors;
    const int exit_code = app.exit(error, std::cout, errors);
    std::cerr << base::TerminalLines(errors.str());
    return exit_code == 0 ? ExitCode::kDone : ExitCode::kWrongArguments;
}

std::span<const NamedCommand> SelectedOrAll(std::span<const NamedCommand> commands, int argc, char** argv) {
    const auto selected = std::ranges::find_if(
        commands, [&](const NamedCommand& command) { return argc > 1 && std::string_view(argv[1]) == command.name; });
    return selected != commands.end() ? std::span(&*selected, 1) : commands;
}

ExitCode RunCommand(int argc, char** argv, std::span<const NamedCommand> commands, std::string (*version)()) {
    CLI::App app("Imports Zelmara! messages and fonts through the ZelTrans module.", "zeltrans");
    // The commands inherit these three.
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_help_flag("-h,--help", "print this help and exit");
    app.group("Commands");
    app.set_version_flag("--version", version, "print the version and exit");
    app.require_subcommand(1);
    CommandRun run;
    for (const NamedCommand& command : SelectedOrAll(commands, argc, argv)) command.add(app, run);
    app.footer(
        "\"zeltrans COMMAND --help\" describes a command.\n"
        "Exit codes: 0 success, 1 failure, 2 invalid arguments.");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return PrintParseError(app, error);
    }
    const ExitCode exit_code = run();
    if (std::cout.flush() || exit_code != ExitCode::kDone) return exit_code;
    throw CommandError("standard output: not everything could be written");
}

std::atomic<bool> g_ran_out_of_memory{false};

void NoteNoMemory() {
    g_ran_out_of_memory = true;
    throw std::bad_alloc();
}

/// Ends the program where an exception can't pass, such as in a destructor that allocates: other libraries have such
/// places. The exception itself isn't always known here.
[[noreturn]] void EndWithoutMemory() {
    if (!g_ran_out_of_memory) std::abort();
    base::RemoveUnfinishedFiles();
    PrintOutOfMemory();
    ::_exit(static_cast<int>(ExitCode::kNotDone));
}

}  // namespace

void PrepareForFailure() noexcept {
    std::set_new_handler(&NoteNoMemory);
    std::set_terminate(&EndWithoutMemory);
}

int ReportException() noexcept {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        PrintOutOfMemory();
    } catch (const std::exception& error) {
        PrintError(error.what());
    }
    return static_cast<int>(ExitCode::kNotDone);
}

int RunProgram(int argc, char** argv, std::span<const NamedCommand> commands, std::string (*version)()) {
    return ReportFailure([&] {
        std::ios::sync_with_stdio(false);  // for the speed of a trace
        return static_cast<int>(RunCommand(argc, argv, commands, version));
    });
}

}  // namespace zel::cli
