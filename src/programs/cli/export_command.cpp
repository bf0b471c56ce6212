#include "programs/cli/export_command.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <utility>
#include <vector>

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "host/document/json_version.h"
#include "host/export/bag.h"
#include "host/export/export_formats.h"
#include "host/export/export_job.h"
#include "host/export/file_patterns.h"
#include "host/export/library_export_service.h"
#include "host/library/library.h"
#include "host/run/export_run.h"
#include "module/contract/message_id.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/export_stream.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/json_output.h"
#include "programs/cli/number_selection.h"
#include "programs/cli/options.h"
#include "programs/cli/output_check.h"
#include "programs/cli/output_file.h"
#include "programs/cli/picture_options.h"
#include "programs/cli/run_observers.h"
#include "programs/cli/run_options.h"
#include "programs/cli/settings_scope.h"

namespace zel::cli {

namespace {

struct ExportArguments {
    std::string library, directory;
    std::vector<std::string> words;  // of NUMBERS
    NumberSelection numbers;
    std::optional<std::string> name, trace, settings;
    std::vector<std::string> formats{"png"};
    exporter::ExportOptions options;
    int jobs = DefaultJobs();
    bool strict = false, json = false;

    bool IsStream() const { return directory == "-"; }
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

std::string NoMessage(const ExportArguments& arguments) {
    return arguments.library +
           (arguments.numbers.IsAll() ? ": contains no message" : ": contains no message of this range");
}

/// The failures in one line; empty for none. Several are also printed as notes.
/// @param failures  of single files.
std::string Failure(const ExportArguments& arguments, const run::ExportOutcome& outcome,
                    const exporter::ExportSummary& summary, const std::vector<std::string>& failures) {
    if (!outcome.order_breaches.empty()) return "the module violated its contract: " + outcome.order_breaches.front();
    if (failures.empty() && summary.messages == 0) return NoMessage(arguments);
    if (failures.empty()) return {};
    for (const std::string& failure : failures) PrintNote(failure);
    return base::Counted(failures.size(), "fault") + " in the export, the first: " + failures.front();
}

/// The directory of an export, and the folders in it that the formats have.
void WriteInto(const std::string& directory, CommandFiles& files) {
    files.WriteInto(directory, [](std::string_view name) { return exporter::IsExportFile({}, name); });
    for (const std::string& folder : exporter::FoldersOf(exporter::ExportFormats())) {
        files.WriteInto(directory + '/' + folder,
                        [folder](std::string_view name) { return exporter::IsExportFile(folder, name); });
    }
}

// @throws CommandError if an output would destroy an input.
void CheckFiles(const ExportArguments& arguments) {
    CommandFiles files;
    files.ReadLibrary(arguments.library);
    files.ReadSettings(arguments.settings);
    files.Write(arguments.trace, "--trace");
    if (!arguments.IsStream()) {
        const bool is_bag = arguments.options.bag;
        WriteInto(is_bag ? arguments.directory + "/data" : arguments.directory, files);
        if (is_bag) files.WriteInto(arguments.directory, exporter::IsTagFile);
    }
    CheckOutputs(files);
}

/// The ranges, one after another, until one is refused or stopped.
run::ExportOutcome RunRanges(const ExportArguments& arguments, host::ExportService& service, RunObservers& observers) {
    run::ExportOutcome outcome;
    const std::string directory = arguments.IsStream() ? "." : arguments.directory;
    for (const host::NumberRange& range : arguments.numbers.Ranges()) {
        outcome = run::RunExport({range, directory, &service, false, WasInterrupted}, observers.All());
        if (outcome.end != run::BatchEnd::kCompleted || !outcome.order_breaches.empty()) break;
    }
    observers.CommitTrace();
    if (outcome.end == run::BatchEnd::kRefused) throw CommandError(arguments.library + ": " + outcome.failure);
    return outcome;
}

ExitCode ReportStop(const ExportArguments& arguments) {
    PrintError(arguments.library + ": stopped before the end of the range");
    return InterruptCode();
}

/// The file of a single message on standard output.
ExitCode ExportStream(const ExportArguments& arguments, library::Library& library, RunObservers& observers) {
    SingleExportService service(library, DiskOf(library, arguments));
    const run::ExportOutcome outcome = RunRanges(arguments, service, observers);
    if (outcome.end == run::BatchEnd::kStopped) return ReportStop(arguments);
    if (!outcome.order_breaches.empty())
        throw CommandError("the module violated its contract: " + outcome.order_breaches.front());
    if (!service.Recording()) throw CommandError(NoMessage(arguments));
    if (service.Count() > 1) {
        throw CommandError(arguments.library + ": contains " + std::to_string(service.Count()) +
                           " messages of this range, and standard output takes one");
    }
    const std::string& format = arguments.formats.front();
    const OutputContent content =
        exporter::FindExportFormat(format)->is_text ? OutputContent::kText : OutputContent::kBinary;
    OutputFile file(arguments.directory, content);
    try {
        file.Write(ExportedFileOf(*service.Recording(), format, arguments.options));
    } catch (const std::runtime_error& error) {
        throw CommandError(arguments.library + ": " + base::NumberedName(service.Recording()->number) + ": " +
                           error.what());
    }
    file.Commit();
    if (arguments.strict && !service.Recording()->warnings.empty())
        PrintWarning(base::NumberedName(service.Recording()->number) + ": recorded with warnings");
    return ExitCode::kDone;
}

/// Prints each message as it is exported, with --verbose.
class DetailedExportService : public exporter::LibraryExportService {
  public:
    using LibraryExportService::LibraryExportService;
    void Complete(int number, const std::string& path) override {
        PrintDetail("exporting " + base::NumberedName(number));
        LibraryExportService::Complete(number, path);
    }
};

ExitCode ExportFiles(const ExportArguments& arguments, library::Library& library, RunObservers& observers) {
    exporter::ExportJob job(arguments.directory, arguments.formats, arguments.options, arguments.jobs);
    const std::string disk = DiskOf(library, arguments);
    DetailedExportService service(library, disk, job);
    const run::ExportOutcome outcome = RunRanges(arguments, service, observers);
    const exporter::ExportSummary summary = job.Finish();
    if (arguments.strict) {
        for (const int number : service.WithWarnings())
            PrintWarning(base::NumberedName(number) + ": recorded with warnings");
    }
    PrintLine(base::Counted(static_cast<std::uint64_t>(summary.messages), "message") + ", " +
              std::to_string(summary.files) + " files in " + arguments.directory);
    std::vector<std::string> failures = service.Failures();
    failures.insert(failures.end(), summary.failures.begin(), summary.failures.end());
    if (arguments.json) PrintJson(SummaryJson(arguments, disk, outcome, summary, failures));
    if (outcome.end == run::BatchEnd::kStopped) return ReportStop(arguments);
    const std::string failure = Failure(arguments, outcome, summary, failures);
    if (!failure.empty()) throw CommandError(failure);
    return ExitCode::kDone;
}

ExitCode RunExportCommand(const ExportArguments& arguments) {
    CheckFiles(arguments);
    const SettingsScope settings(arguments.settings);
    library::Library library(arguments.library, library::Access::kRead);
    RunObservers observers(arguments.trace);
    HandleInterrupts();
    const ExitCode code =
        arguments.IsStream() ? ExportStream(arguments, library, observers) : ExportFiles(arguments, library, observers);
    settings.PrintAnyNote();
    return code == ExitCode::kDone ? StrictCode(arguments.strict) : code;
}

void ListFormats(bool json) {
    for (const exporter::ExportFormat& format : exporter::ExportFormats()) {
        if (json) {
            PrintJson({{"version", document::kJsonVersion},
                       {"name", format.name},
                       {"description", format.description},
                       {"has_alpha", format.has_alpha},
                       {"files", format.files},
                       {"options", format.options}});
            continue;
        }
        std::cout << format.name << std::string(format.name.size() < 10 ? 10 - format.name.size() : 1, ' ')
                  << format.description;
        const char* before = " [";
        for (const std::string_view option : format.options) std::cout << std::exchange(before, " ") << "--" << option;
        std::cout << (format.options.empty() ? "\n" : "]\n");
    }
    throw CLI::Success();
}

// Options that go together, and that have an effect.
void CheckOptions(const CLI::App& command, ExportArguments& arguments) {
    ParseNumbers(arguments.words, arguments.numbers);
    const auto& formats = arguments.formats;
    RequirePictureOptions(command, formats);
    if (arguments.IsStream()) {
        if (formats.size() != 1 || !exporter::FindExportFormat(formats.front())->is_single_file)
            throw CLI::ValidationError("--out", "standard output takes one --format that makes a single file");
        Require(command, "--jobs", false, "a directory of files");
        Require(command, "--bag", false, "a directory of files");
    }
    const std::optional<std::string> directory(arguments.directory);
    ReserveStandardOutputFor({{"--out", &directory}, {"--trace", &arguments.trace}}, arguments.json);
}

}  // namespace

void AddExportCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<ExportArguments>();
    CLI::App& command =
        *app.add_subcommand("export", "Writes recorded messages as files, through the module's batch export.");
    AddArgument(command, "LIBRARY", arguments->library, "the library, a file that zeltrans batch has written");
    AddNumbers(command, arguments->words, "the whole disk");
    AddRequired(command, "--out", arguments->directory, "DIR|-",
                "the directory for the files, created if it is missing; - writes the file of a single message to "
                "standard output");
    command.add_option("--format", arguments->formats, "a format to write; may be repeated [png]")
        ->type_name("NAME")
        ->check(CheckFormat, "");
    // Before --list-formats, which is carried out in this order before it is noticed that arguments are missing.
    AddJson(command, arguments->json, "print a summary, or each of the formats, as a JSON object in one line");
    command.add_flag_callback(
        "--list-formats", [arguments] { ListFormats(arguments->json); }, "print the formats and exit");
    AddPictureOptions(command, arguments->options);
    command.add_flag("--bag", arguments->options.bag,
                     "make the directory a BagIt bag, with the files in its folder data");
    AddText(command, "--disk", arguments->name, "NAME", "the name of the disk, if the library contains several");
    AddJobs(command, arguments->jobs, "messages exported in parallel");
    AddTrace(command, arguments->trace);
    AddSettings(command, arguments->settings);
    AddStrict(command, arguments->strict);
    AddVerbosity(command, true);
    AddExample(command, "zeltrans export messages.zellib --out pictures --format html");
    command.callback([arguments, &command, &run] {
        CheckOptions(command, *arguments);
        run = [arguments] { return RunExportCommand(*arguments); };
    });
}

}  // namespace zel::cli
