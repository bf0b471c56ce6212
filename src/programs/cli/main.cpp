#include <csignal>
#include <cstdio>
#include <string>
#include <string_view>

#include <dlfcn.h>

#include "base/process.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/info_command.h"
#include "programs/cli/run_program.h"
#include "programs/cli/verify_command.h"

using namespace zel;

namespace {

// "info" and "verify" need none of the other commands' libraries, which take longer to load than they take to run.
constexpr cli::NamedCommand kOwnCommands[] = {{"info", cli::AddInfoCommand}, {"verify", cli::AddVerifyCommand}};

/// Ends the program by the signal that has stopped its command, so that a shell's loop ends with it.
void EndBySignal(int exit_code) {
    const int signal = exit_code - static_cast<int>(cli::ExitCode::kSignal);
    if (signal <= 0) return;
    std::fflush(nullptr);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

int RunFromLibrary(int argc, char** argv) {
    // Found through the program's run path; never unloaded.
    void* const library = ::dlopen(ZELTRANS_COMMAND_LIBRARY, RTLD_LAZY | RTLD_LOCAL);
    void* const entry = library != nullptr ? ::dlsym(library, cli::kCommandLibraryEntry) : nullptr;
    if (entry == nullptr) {
        const char* const reason = ::dlerror();
        throw cli::CommandError(std::string(ZELTRANS_COMMAND_LIBRARY ": cannot be loaded: ") +
                                (reason != nullptr ? reason : "no entry point"));
    }
    return reinterpret_cast<cli::RunAnyCommandFunction>(entry)(argc, argv);
}

int Run(int argc, char** argv) {
    for (const cli::NamedCommand& command : kOwnCommands) {
        if (argc > 1 && std::string_view(argv[1]) == command.name)
            return cli::RunProgram(argc, argv, kOwnCommands, [] { return std::string("zeltrans " ZELTRANS_VERSION); });
    }
    return cli::ReportFailure([&] { return RunFromLibrary(argc, argv); });
}

}  // namespace

int main(int argc, char** argv) {
    base::PrepareProcess();
    const int exit_code = Run(argc, argv);
    EndBySignal(exit_code);
    return exit_code;
}
