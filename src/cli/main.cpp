#include <exception>
#include <iostream>
#include <new>

#include <CLI/CLI.hpp>

#include "cli/arguments.h"
#include "cli/batch_command.h"
#include "cli/export_command.h"
#include "cli/fetch_command.h"
#include "cli/font_command.h"
#include "cli/import_command.h"
#include "cli/info_command.h"
#include "cli/library_command.h"
#include "cli/sample_command.h"
#include "cli/settings_command.h"

namespace {

int WrongArguments(const CLI::App& app, const CLI::ParseError& error) {
    if (error.get_name() == "RequiredError" && app.get_subcommands().empty() && app.remaining_size() != 0) {
        std::cerr << "There is no command \"" << app.remaining().front()
                  << "\"\nRun with --help for more information.\n";
        return kWrongArguments;
    }
    // Help and version are no errors, and CLI11 prints them.
    return app.exit(error) == 0 ? kDone : kWrongArguments;
}

int RunCommand(int argc, char** argv) {
    CLI::App app("Imports Zelmara! messages and fonts through the ZelTrans module.", "zeltrans");
    app.set_version_flag("--version", "zeltrans " ZELTRANS_VERSION);
    app.require_subcommand(1);
    CommandRun run;
    AddImportCommand(app, run);
    AddBatchCommand(app, run);
    AddExportCommand(app, run);
    AddFontCommand(app, run);
    AddInfoCommand(app, run);
    AddLibraryCommand(app, run);
    AddFetchCommand(app, run);
    AddSampleCommand(app, run);
    AddSettingsCommand(app, run);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return WrongArguments(app, error);
    }
    const int exit_code = run();
    if (std::cout.flush() || exit_code != kDone) return exit_code;
    throw CommandError("standard output: not everything could be written");
}

}  // namespace

int main(int argc, char** argv) {
    try {
        std::ios::sync_with_stdio(false);  // a trace has many lines
        return RunCommand(argc, argv);
    } catch (const std::bad_alloc&) {
        SayError("out of memory");
    } catch (const std::exception& error) {
        SayError(error.what());
    }
    return kNotDone;
}
