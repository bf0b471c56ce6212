#include "programs/cli/export_command.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <vector>

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "host/document/json_version.h"
#include "host/export/export_formats.h"
#include "host/export/export_job.h"
#include "host/export/library_export_service.h"
#include "host/library/library.h"
#include "host/run/export_run.h"
#include "module/contract/message_id.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/json_output.h"
#include "programs/cli/options.h"
#include "programs/cli/output_check.h"
#include "programs/cli/run_observers.h"
#include "programs/cli/run_options.h"
#include "programs/cli/settings_scope.h"

namespace zel::cli {

namespace {

struct ExportArguments {
    std::string library, directory;
    host::NumberRange range;
    std::optional<std::string> name, trace, settings;
    std::vector<std::string> formats{"png"};
    exporter::ExportOptions options;
    int jobs = DefaultJobs();
    bool json = false;
};

/// The disk of --disk, else the only one.
std::string DiskOf(library::Library& library, const ExportArguments& arguments) {
    const std::vector<std::string> disks = library.Disks();
    if (arguments.name) {
        if (std::ranges::find(disks, *arguments.name) != disks.end()) return *arguments.name;
        throw CommandError(arguments.library + ": contains no disk named \"" + *arguments.name + "\"");
    }
    if (disks.size() <= 1) return disks.empty() ? std::string() : disks.front();
    std::string names;
    for (const std::string& disk : disks) names += (names.empty() ? "\"" : ", \"") + disk + "\"";
    throw CommandError(arguments.library + ": contains several disks; choose one with --disk: " + names);
}

/// @param failures  of single files.
nlohmann::ordered_json SummaryJson(const ExportArguments& arguments, const std::string& disk,
                                   const run::ExportOutcome& outcome, const exporter::ExportSummary& summary,
                                   const std::vector<std::string>& failures) {
    return {{"version", document::kJsonVersion},
            {"library", arguments.library},
            {"disk", disk},
            {"directory", arguments.directory},
            {"stopped", outcome.end == run::BatchEnd::kStopped},
            {"messages", summary.messages},
            {"failed_messages", summary.failed_messages},
            {"files", summary.files},
            {"bytes", summary.bytes},
            {"failures", failures}};
}

/// The failures in one line; empty for none. Several are also printed as notes.
/// @param failures  of single files.
std::string Failure(const ExportArguments& arguments, const run::ExportOutcome& outcome,
                    const exporter::ExportSummary& summary, const std::vector<std::string>& failures) {
    if (outcome.end == run::BatchEnd::kStopped) return arguments.library + ": stopped before the end of the range";
    if (!outcome.order_breaches.empty()) return "the module violated its contract: " + outcome.order_breaches.front();
    if (failures.empty() && summary.messages == 0) return arguments.library + ": contains no message of this range";
    if (failures.empty()) return {};
    for (const std::string& failure : failures) PrintNote(failure);
    return base::Counted(failures.size(), "file") + " could not be exported, the first: " + failures.front();
}

/// Whether an export may give a file this name: NUMBER.png, news_NUMBER_square.png and the like, or a list.
bool IsExportFile(std::string_view name) {
    if (name == "SHA256SUMS" || name == "manifest.json" || name == "index.html") return true;
    if (name.starts_with("contact-sheet-")) return true;
    std::string_view stem = name.substr(0, name.find('.'));
    for (const std::string_view suffix : {"_A", "_square"}) {
        if (stem.ends_with(suffix)) stem.remove_suffix(suffix.size());
    }
    const std::string_view number = stem.substr(stem.rfind('_') + 1);  // after no _, all of it
    return stem.size() < name.size() && number.size() == 4 && CountDigits(number) == 4;
}

// @throws CommandError if an output would destroy an input.
void CheckFiles(const ExportArguments& arguments) {
    CommandFiles files;
    files.ReadLibrary(arguments.library);
    files.ReadSettings(arguments.settings);
    files.Write(arguments.trace, "--trace");
    files.WriteInto(arguments.directory, IsExportFile);
    CheckOutputs(files);
}

ExitCode RunExportCommand(const ExportArguments& arguments) {
    CheckFiles(arguments);
    const SettingsScope settings(arguments.settings);
    library::Library library(arguments.library, library::Access::kRead);
    RunObservers observers(arguments.trace);
    exporter::ExportJob job(arguments.directory, arguments.formats, arguments.options, arguments.jobs);
    const std::string disk = DiskOf(library, arguments);
    exporter::LibraryExportService service(library, disk, job);
    HandleInterrupts();
    const run::ExportOutcome outcome =
        run::RunExport({arguments.range, arguments.directory, &service, false, WasInterrupted}, observers.All());
    observers.CommitTrace();
    if (outcome.end == run::BatchEnd::kRefused) throw CommandError(arguments.library + ": " + outcome.failure);
    const exporter::ExportSummary summary = job.Finish();
    std::vector<std::string> failures = service.Failures();
    failures.insert(failures.end(), summary.failures.begin(), summary.failures.end());
    if (arguments.json) {
        PrintJson(SummaryJson(arguments, disk, outcome, summary, failures));
    } else if (!observers.TraceIsStandardOutput()) {
        PrintLine(base::Counted(static_cast<std::uint64_t>(summary.messages), "message") + ", " +
                  std::to_string(summary.files) + " files in " + arguments.directory);
    }
    const std::string failure = Failure(arguments, outcome, summary, failures);
    if (!failure.empty()) throw CommandError(failure);
    settings.PrintAnyNote();
    return ExitCode::kDone;
}

void ListFormats(bool json) {
    for (const exporter::ExportFormat& format : exporter::ExportFormats()) {
        if (json) {
            PrintJson({{"version", document::kJsonVersion},
                       {"name", format.name},
                       {"description", format.description},
                       {"has_alpha", format.has_alpha}});
            continue;
        }
        std::cout << format.name << std::string(format.name.size() < 10 ? 10 - format.name.size() : 1, ' ')
                  << format.description << "\n";
    }
    throw CLI::Success();
}

std::string CheckFormat(const std::string& name) {
    const auto& formats = exporter::ExportFormats();
    if (std::ranges::find(formats, name, &exporter::ExportFormat::name) != formats.end()) return {};
    return "\"" + name + "\" is not a format; see --list-formats";
}

}  // namespace

void AddExportCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<ExportArguments>();
    CLI::App& command =
        *app.add_subcommand("export", "Writes recorded messages as files, through the module's batch export.");
    AddArgument(command, "LIBRARY", arguments->library, "the library, a file that zeltrans batch has written");
    AddRange(command, arguments->range);
    AddRequired(command, "--out", arguments->directory, "DIR", "the directory for the files, created if it is missing");
    command.add_option("--format", arguments->formats, "a format to write; may be repeated [png]")
        ->type_name("NAME")
        ->check(CheckFormat, "");
    // Before --list-formats, which is carried out in this order before it is noticed that arguments are missing.
    AddJson(command, arguments->json, "print a summary, or each of the formats, as a JSON object in one line");
    command.add_flag_callback(
        "--list-formats", [arguments] { ListFormats(arguments->json); }, "print the formats and exit");
    command.add_flag("--premultiplied", arguments->options.premultiplied,
                     "premultiply colours by alpha, in formats with an alpha channel");
    AddSmall(command, arguments->options.effort);
    AddText(command, "--disk", arguments->name, "NAME", "the name of the disk, if the library contains several");
    AddJobs(command, arguments->jobs, "messages exported in parallel");
    AddTrace(command, arguments->trace);
    AddSettings(command, arguments->settings);
    AddExample(command, "zeltrans export messages.zellib 1 9999 --out pictures --format html");
    command.callback([arguments, &run] {
        CheckOneOutput(arguments->json, arguments->trace);
        run = [arguments] { return RunExportCommand(*arguments); };
    });
}

}  // namespace zel::cli
