#include "programs/cli/export_command.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <thread>
#include <vector>

#include "host/export/export_formats.h"
#include "host/export/export_job.h"
#include "host/export/library_shelf.h"
#include "host/library/library.h"
#include "host/run/export_run.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/settings_scope.h"
#include "programs/cli/trace_output.h"

namespace zel::cli {

namespace {

struct ExportArguments {
    std::string library, directory;
    host::NumberRange range;
    std::optional<std::string> name, trace, settings;
    std::vector<std::string> formats{"png"};
    exporter::ExportOptions options;
    unsigned jobs = std::max(1U, std::thread::hardware_concurrency());
};

/// The disk that is meant: the one named, else the only one.
std::string DiskOf(library::Library& library, const ExportArguments& arguments) {
    const std::vector<std::string> disks = library.Disks();
    if (arguments.name) {
        if (std::ranges::find(disks, *arguments.name) != disks.end()) return *arguments.name;
        throw CommandError(arguments.library + ": there is no disk of the name \"" + *arguments.name + "\"");
    }
    if (disks.size() <= 1) return disks.empty() ? std::string() : disks.front();
    std::string names;
    for (const std::string& disk : disks) names += (names.empty() ? "\"" : ", \"") + disk + "\"";
    throw CommandError(arguments.library + ": messages of several disks; choose one by --disk: " + names);
}

/// One line that tells of all failures; empty without any.
std::string Failure(const ExportArguments& arguments, const run::ExportOutcome& outcome,
                    const exporter::ExportSummary& summary, const std::vector<std::string>& unreadable) {
    if (outcome.end == run::BatchEnd::kStopped) return arguments.library + ": stopped before the end of the range";
    if (!outcome.order_breaches.empty()) return "the module broke its contract: " + outcome.order_breaches.front();
    std::vector<std::string> failures = unreadable;
    failures.insert(failures.end(), summary.failures.begin(), summary.failures.end());
    if (failures.empty() && summary.messages == 0) return arguments.library + ": holds no message of this range";
    if (failures.empty()) return {};
    for (const std::string& failure : failures) SayNote(failure);
    return std::to_string(failures.size()) + (failures.size() == 1 ? " file" : " files") +
           " could not be exported, the first: " + failures.front();
}

ExitCode RunExportCommand(const ExportArguments& arguments) {
    const SettingsScope settings(arguments.settings);
    library::Library library(arguments.library, library::Access::kRead);
    std::unique_ptr<TraceOutput> trace;
    if (arguments.trace) trace = std::make_unique<TraceOutput>(*arguments.trace);
    exporter::ExportJob job(arguments.directory, arguments.formats, arguments.options,
                            static_cast<int>(arguments.jobs));
    exporter::LibraryShelf shelf(library, DiskOf(library, arguments), job);
    std::vector<host::HostObserver*> observers;
    if (trace) observers.push_back(&trace->Observer());
    HeedInterrupts();
    const run::ExportOutcome outcome =
        run::RunExport({arguments.range, arguments.directory, &shelf, false, WasInterrupted}, observers);
    if (trace) trace->Commit();
    if (outcome.end == run::BatchEnd::kRefused) throw CommandError(arguments.library + ": " + outcome.failure);
    const exporter::ExportSummary summary = job.Finish();
    if (arguments.trace != "-") {
        std::cout << summary.messages << (summary.messages == 1 ? " message, " : " messages, ") << summary.files
                  << " files in " << arguments.directory << std::endl;
    }
    const std::string failure = Failure(arguments, outcome, summary, shelf.Failures());
    if (!failure.empty()) throw CommandError(failure);
    if (!settings.Note().empty()) SayNote(settings.Note());
    return ExitCode::kDone;
}

void ListFormats() {
    for (const exporter::ExportFormat& format : exporter::ExportFormats()) {
        std::cout << format.name << std::string(format.name.size() < 10 ? 10 - format.name.size() : 1, ' ')
                  << format.description << "\n";
    }
    throw CLI::Success();
}

std::string CheckFormat(const std::string& name) {
    const auto& formats = exporter::ExportFormats();
    if (std::ranges::find(formats, name, &exporter::ExportFormat::name) != formats.end()) return {};
    return "\"" + name + "\" is no format; --list-formats tells which there are";
}

}  // namespace

void AddExportCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<ExportArguments>();
    CLI::App& command =
        *app.add_subcommand("export", "Writes recorded messages as files, through the module's batch export.");
    command.add_option("LIBRARY", arguments->library, "the library, as zeltrans batch records it")
        ->required()
        ->type_name("");
    command.add_option("FIRST", arguments->range.first, "the first number")->required()->type_name("");
    command.add_option("LAST", arguments->range.last, "the last number, up to 9999")->required()->type_name("");
    command.add_option("--out", arguments->directory, "where the files go")->required()->type_name("DIR");
    command.add_option("--format", arguments->formats, "a format; may be given several times [png]")
        ->type_name("NAME")
        ->check(CheckFormat, "");
    command.add_flag_callback("--list-formats", ListFormats, "list the formats")->trigger_on_parse();
    command.add_flag("--premultiplied", arguments->options.premultiplied,
                     "colours multiplied by their alpha, in the formats with an alpha of their own");
    command.add_option("--disk", arguments->name, "name of the disk, when the library holds several")
        ->type_name("NAME");
    command.add_option("--jobs", arguments->jobs, "messages worked on at once [one a core]")
        ->type_name("N")
        ->check(CLI::Range(1U, 256U), "");
    AddPath(command, "--trace", arguments->trace, "FILE|-",
            "write all that the host hears, one JSON object a line; - is standard output");
    AddSettings(command, arguments->settings);
    AddExample(command, "zeltrans export messages.zellib 1 9999 --out pictures --format png --format html");
    command.callback([arguments, &run] { run = [arguments] { return RunExportCommand(*arguments); }; });
}

}  // namespace zel::cli
