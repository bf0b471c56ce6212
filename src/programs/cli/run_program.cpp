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

ExitCode PrintCommandMissing(const std::vector<std::string>& names) {
    std::cerr << "A command is required:";
    for (const std::string& name : names) std::cerr << " " << name;
    std::cerr << "\nRun with --help for more information.\n";
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
        const std::vector<std::string> names = CommandNames(command);
        if (!names.empty() && !rest.empty()) return PrintUnknown("command", rest.front(), names);
        if (!names.empty()) return PrintCommandMissing(names);
    }
    // CLI11 reports --help and --version in this way too, and prints them.
    std::ostringstream errors;
    const int exit_code = app.exit(error, std::cout, errors);
    std::cerr << base::TerminalLines(errors.str());
    return exit_code == 0 ? ExitCode::kDone : ExitCode::kWrongArguments;
}

/// The command line without the program's name. No argument at all asks for help.
struct Arguments {
    Arguments(int argc, char** argv) : words(argv + std::min(argc, 1), argv + argc) {
        is_help = words.empty() || words.front() == "help";
        if (is_help && !words.empty()) words.erase(words.begin());
    }
    std::string Command() const { return words.empty() ? std::string() : words.front(); }

    std::vector<std::string> words;
    /// The words are commands, of which the last one is to be described.
    bool is_help = false;
};

ExitCode PrintHelp(CLI::App& app, const std::vector<std::string>& words) {
    const CLI::App* command = &app;
    std::string name = app.get_name();
    for (const std::string& word : words) {
        const std::vector<std::string> names = CommandNames(*command);
        if (std::ranges::find(names, word) == names.end()) return PrintUnknown("command", word, names);
        command = command->get_subcommand(word);
        name += " " + word;
    }
    std::cout << command->help(words.empty() ? std::string() : name.substr(0, name.rfind(' ')));
    return ExitCode::kDone;
}

std::span<const NamedCommand> SelectedOrAll(std::span<const NamedCommand> commands, const std::string& first) {
    const auto selected =
        std::ranges::find_if(commands, [&](const NamedCommand& command) { return first == command.name; });
    return selected != commands.end() ? std::span(&*selected, 1) : commands;
}

ExitCode RunCommand(int argc, char** argv, std::span<const NamedCommand> commands, std::string (*version)()) {
    CLI::App app;
    AddProgramOptions(app, version);
    CommandRun run;
    Arguments arguments(argc, argv);
    for (const NamedCommand& command : SelectedOrAll(commands, arguments.Command())) command.add(app, run);
    if (arguments.is_help) {
        run = [&] { return PrintHelp(app, arguments.words); };
    } else {
        try {
            std::ranges::reverse(arguments.words);  // CLI11 takes them from the end
            app.parse(std::move(arguments.words));
        } catch (const CLI::ParseError& error) {
            return PrintParseError(app, error);
        }
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
