#include <string>
#include <string_view>

#include <dlfcn.h>

#include "base/process.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/info_command.h"
#include "programs/cli/run_program.h"

using namespace zel;

namespace {

// "info" needs none of the other commands' libraries, which take longer to load than it takes to run.
constexpr cli::NamedCommand kOwnCommands[] = {{"info", cli::AddInfoCommand}};

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

}  // namespace

int main(int argc, char** argv) {
    base::PrepareProcess();
    for (const cli::NamedCommand& command : kOwnCommands) {
        if (argc > 1 && std::string_view(argv[1]) == command.name)
            return cli::RunProgram(argc, argv, kOwnCommands, [] { return std::string("zeltrans " ZELTRANS_VERSION); });
    }
    return cli::ReportFailure([&] { return RunFromLibrary(argc, argv); });
}
