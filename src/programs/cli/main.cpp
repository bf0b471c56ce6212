#include <string>
#include <string_view>

#include <dlfcn.h>

#include "programs/cli/info_command.h"
#include "programs/cli/run_program.h"

using namespace zel;

namespace {

// The libraries below the commands take longer to load than "info" takes to run, and it needs none of them.
constexpr cli::NamedCommand kOwnCommands[] = {{"info", cli::AddInfoCommand}};

int RunFromLibrary(int argc, char** argv) {
    // Looked for by the program's own run path; it stays loaded.
    void* const library = ::dlopen(ZELTRANS_COMMAND_LIBRARY, RTLD_LAZY | RTLD_LOCAL);
    void* const entry = library != nullptr ? ::dlsym(library, cli::kCommandLibraryEntry) : nullptr;
    if (entry == nullptr) {
        const char* const reason = ::dlerror();
        cli::SayError(std::string(ZELTRANS_COMMAND_LIBRARY " can't be used: ") +
                      (reason != nullptr ? reason : "no entry"));
        return static_cast<int>(cli::ExitCode::kNotDone);
    }
    return reinterpret_cast<cli::RunAnyCommandFunction>(entry)(argc, argv);
}

}  // namespace

int main(int argc, char** argv) {
    for (const cli::NamedCommand& command : kOwnCommands) {
        if (argc > 1 && std::string_view(argv[1]) == command.name) return cli::RunProgram(argc, argv, kOwnCommands);
    }
    return RunFromLibrary(argc, argv);
}
