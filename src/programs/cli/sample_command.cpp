#include "programs/cli/sample_command.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <vector>

#include <CLI/App.hpp>

#include "programs/cli/diagnostics.h"
#include "programs/cli/options.h"
#include "programs/cli/shell_text.h"
#include "samples/disk/demo_disk.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

ExitCode WriteSample(const std::string& directory) {
    std::vector<fs::path> written;
    try {
        written = samples::WriteDemonstrationDisk(directory);
    } catch (const std::runtime_error& error) {
        throw CommandError(error.what());
    }
    for (const fs::path& file : written) PrintDetail(file.string());
    const auto in = [&](const char* name) {
        return std::ranges::count_if(written,
                                     [&](const fs::path& file) { return file.parent_path().filename() == name; });
    };
    const auto messages = in("MESSAGES"), fonts = in("MACHINE");
    const fs::path disk(directory);
    const auto first =
        std::ranges::find_if(written, [](const fs::path& file) { return file.parent_path().filename() == "MESSAGES"; });
    PrintLine("Wrote a demonstration disk to " + disk.string() + ":");
    PrintLine("  " + std::to_string(messages) + " messages in MESSAGES, " + std::to_string(fonts) +
              " fonts in MACHINE, " + std::to_string(static_cast<std::ptrdiff_t>(written.size()) - messages - fonts) +
              " name lists");
    if (first != written.end()) {
        PrintLine("Next:");
        PrintLine("  zeltrans info " + ShellQuoted(disk.string()));
        PrintLine("  zeltrans import " + ShellQuoted(first->string()) + " --maps " + ShellQuoted(disk.string()) +
                  " --png message.png");
    }
    return ExitCode::kDone;
}

}  // namespace

void AddSampleCommand(CLI::App& app, CommandRun& run) {
    const auto directory = std::make_shared<std::string>();
    CLI::App& command =
        *app.add_subcommand("sample", "Writes a demonstration disk: messages, fonts and the two name lists.");
    AddArgument(command, "DIR", *directory,
                "the disk's directory, created if it is missing; existing files of the same names are replaced");
    AddVerbosity(command, true);
    AddExample(command, "zeltrans sample DISK");
    command.callback([directory, &run] { run = [directory] { return WriteSample(*directory); }; });
}

}  // namespace zel::cli
