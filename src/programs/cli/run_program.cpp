#include "programs/cli/run_program.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <unistd.h>

#include "base/terminal_text.h"
#include "base/whole_file.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/program_options.h"
#include "programs/cli/suggestion.h"

namespace zel::cli {

namespace {

/// The last command of the command line that is known.
const CLI::App& LastCommand(const CLI::App& app) {
    const CLI::App* last = &app;
    while (!last->get_subcommands().empty()) last = last->get_subcommands().front();
    return *last;
}

std::vector<std::string> CommandNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

std::vector<std::string> OptionNames(const CLI::App& app) {
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
    return names;
}

ExitCode PrintUnknown(const std::string& what, const std::string& typed, const std::vector<std::string>& names) {
    std::cerr << "Unknown " << what << " \"" << base::TerminalText(typed) << "\"\n";
    if (const std::string meant = Suggestion(typed, names); !meant.empty())
        std::cerr << "Did you mean " << meant << "?\n";
    std::cerr << "Run with --help for more information.\n";
    return ExitCode::kWrongArguments;
}

ExitCode PrintParseError(const CLI::App& app, const CLI::ParseError& error) {
    const CLI::App& command = LastCommand(app);
    const std::vector<std::string> rest = command.remaining();
    // What is missing matters less than what is not understood.
    const auto kind = static_cast<CLI::ExitCodes>(error.get_exit_code());
    if (kind == CLI::ExitCodes::RequiredError || kind == CLI::ExitCodes::ExtrasError) {
        const auto option =
            std::ranges::find_if(rest, [](const std::string& word) { return word.size() > 1 && word[0] == '-'; });
        if (option != rest.end())
            return PrintUnknown("option", option->substr(0, option->find('=')), OptionNames(command));
        if (const std::vector<std::string> names = CommandNames(command); !names.empty() && !rest.empty())
            return PrintUnknown("command", rest.front(), names);
    }
    // CLI11 reports --help and --version in this way too, and prints them.
    std::ostringstream errors;
    const int exit_code = app.exit(error, std::cout, errors);
    std::cerr << base::TerminalLines(errors.str());
    return exit_code == 0 ? ExitCode::kDone : ExitCode::kWrongArguments;
}

/// "help COMMAND" as "COMMAND --help". No argument at all asks for help too.
std::vector<std::string> Arguments(int argc, char** argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (!arguments.empty() && arguments.front() == "help") {
        arguments.erase(arguments.begin());
        arguments.emplace_back("--help");
    }
    if (arguments.empty()) arguments.emplace_back("--help");
    return arguments;
}

std::span<const NamedCommand> SelectedOrAll(std::span<const NamedCommand> commands, const std::string& first) {
    const auto selected =
        std::ranges::find_if(commands, [&](const NamedCommand& command) { return first == command.name; });
    return selected != commands.end() ? std::span(&*selected, 1) : commands;
}

ExitCode RunCommand(int argc, char** argv, std::span<const NamedCommand> commands) {
    CLI::App app;
    AddProgramOptions(app);
    CommandRun run;
    std::vector<std::string> arguments = Arguments(argc, argv);
    for (const NamedCommand& command : SelectedOrAll(commands, arguments.front())) command.add(app, run);
    try {
        std::ranges::reverse(arguments);  // CLI11 takes them from the end
        app.parse(std::move(arguments));
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

int RunProgram(int argc, char** argv, std::span<const NamedCommand> commands) {
    return ReportFailure([&] {
        std::ios::sync_with_stdio(false);  // for the speed of a trace
        return static_cast<int>(RunCommand(argc, argv, commands));
    });
}

}  // namespace zel::cli
