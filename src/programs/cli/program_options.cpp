#include "programs/cli/program_options.h"

#include <CLI/App.hpp>

#include "programs/cli/help_formatter.h"

namespace zel::cli {

void AddProgramOptions(CLI::App& app, std::string (*version)()) {
    app.name("zeltrans");
    app.description("Imports Zelmara! messages and fonts through the ZelTrans module.");
    // The commands inherit these three.
    app.formatter(std::make_shared<HelpFormatter>());
    app.set_help_flag("-h,--help", "print this help and exit");
    app.group("Commands");
    app.set_version_flag("--version", version, "print the version and exit");
    app.require_subcommand(1);
    app.footer(
        "\"zeltrans help COMMAND\" describes a command.\n"
        "Exit codes: 0 success, 1 failure, 2 invalid arguments, 130 Ctrl-C.");
}

}  // namespace zel::cli
