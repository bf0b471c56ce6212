#include "programs/cli/batch_command.h"

#include <algorithm>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include "host/document/json_version.h"
#include "host/document/message_warnings.h"
#include "host/native_path.h"
#include "host/recorder/batch_recorder.h"
#include "host/recorder/disk_names.h"
#include "host/recorder/resume.h"
#include "host/run/batch_run.h"
#include "module/contract/message_id.h"
#include "platform/system/files.h"
#include "programs/cli/batch_progress.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/json_output.h"
#include "programs/cli/options.h"
#include "programs/cli/output_check.h"
#include "programs/cli/output_file.h"
#include "programs/cli/run_observers.h"
#include "programs/cli/run_options.h"
#include "programs/cli/settings_scope.h"

namespace zel::cli {

namespace {

struct BatchArguments {
    run::BatchRequest request;
    host::NumberRange range;
    std::optional<std::string> library, name, directory, report, trace, settings;
    host::TracePixels pixels = host::TracePixels::kNo;
    bool resume = false, json = false;
    picture::PngEffort effort = picture::PngEffort::kFast;
    int jobs = DefaultJobs();

    bool Records() const { return library || directory; }
};

/// The numbers of a range; empty if the module rejects the range.
struct Interval {
    int first = 0, last = -1;
};
Interval IntervalOf(const host::NumberRange& range) {
    const std::string_view first = WithoutLeadingDot(range.first), last = WithoutLeadingDot(range.last);
    if (CountDigits(first) != first.size() || CountDigits(last) != last.size()) return {};
    const Interval interval{MessageNumberOf(first), MessageNumberOf(last)};
    const bool valid = interval.last >= 1 && interval.last <= kLargestMessageNumber && interval.first <= interval.last;
    return valid ? interval : Interval{};
}

recorder::RecorderOptions RecorderOptionsOf(const BatchArguments& arguments, recorder::FileDigests& digests) {
    recorder::RecorderOptions options;
    options.context.disk = arguments.name.value_or("");
    options.context.font_directory = run::FontDirectoryOf(arguments.request);
    options.context.png_effort = arguments.effort;
    options.context.options = recorder::DescribeOptions(arguments.request.host, digests);
    options.library = arguments.library;
    options.directory = arguments.directory;
    options.jobs = static_cast<std::size_t>(arguments.jobs);
    return options;
}

/// Reports the numbers of a batch that records nothing, with their warnings.
class ItemObserver : public host::HostObserver {
  public:
    explicit ItemObserver(BatchProgress& progress) : m_progress(progress) {}
    void OnMessage(const document::MessageRecord& message) override { m_warnings = document::WarningsOf(message); }
    void OnBatchItem(const host::BatchItem& item) override {
        std::vector<std::string> warnings = std::exchange(m_warnings, {});
        if (item.outcome != host::ItemOutcome::kRecorded) warnings.clear();
        m_progress.Add({item, std::move(warnings), false});
    }

  private:
    BatchProgress& m_progress;
    std::vector<std::string> m_warnings;
};

class BatchCommand {
  public:
    explicit BatchCommand(const BatchArguments& arguments);

    ExitCode Run();

  private:
    void NameDisk();
    void SkipRecorded();
    run::BatchOutcome RunModule();
    nlohmann::ordered_json Report(const run::BatchOutcome& outcome) const;
    void WriteReport(const nlohmann::ordered_json& report);

    bool Records() const { return m_arguments.Records() && m_disk_error.empty(); }

    const BatchArguments& m_arguments;
    run::BatchRequest m_request;
    // Why no message can be imported. The module runs for its trace only then.
    const std::string m_disk_error;
    const Interval m_interval;
    SettingsScope m_settings;
    RunObservers m_observers;
    std::unique_ptr<OutputFile> m_report;
    recorder::FileDigests m_digests{WasInterrupted};
    recorder::RecorderOptions m_recorder_options;
    BatchProgress m_progress;
};

/// The files that --out makes: NUMBER.png and NUMBER.json.
bool IsRecordingFile(std::string_view name) {
    constexpr std::size_t kDigits = 4;
    const std::string_view end = name.substr(std::min(name.size(), kDigits));
    return CountDigits(name) == kDigits && (end == ".png" || end == ".json");
}

// @throws CommandError if an output would destroy an input.
const BatchArguments& Checked(const BatchArguments& arguments) {
    CommandFiles files;
    files.SearchByModule(run::MessageDirectoryOf(arguments.request.disk));
    files.SearchByModule(run::FontDirectoryOf(arguments.request));
    if (arguments.request.browse) files.ReadByModule(*arguments.request.browse, "the file of --browse");
    files.ReadNameLists(arguments.request.host.maps);
    files.ReadSettings(arguments.settings);
    if (arguments.library) files.WriteLibrary(*arguments.library);
    files.Write(arguments.report, "--report");
    files.Write(arguments.trace, "--trace");
    if (arguments.directory) files.WriteInto(*arguments.directory, IsRecordingFile);
    CheckOutputs(files);
    return arguments;
}

// Opens the outputs, so that one that cannot be written is reported before the module runs.
BatchCommand::BatchCommand(const BatchArguments& arguments)
    : m_arguments(Checked(arguments)),
      m_request(arguments.request),
      m_disk_error(run::DiskError(arguments.request)),
      m_interval(IntervalOf(arguments.range)),
      m_settings(arguments.settings),
      m_observers(arguments.trace, arguments.pixels),
      m_recorder_options(RecorderOptionsOf(arguments, m_digests)),
      m_progress(m_disk_error.empty() ? StyleFor(arguments.json, arguments.trace) : BatchProgress::Style::kNothing,
                 arguments.request.disk, m_interval.last - m_interval.first + 1) {
    m_request.ranges = {arguments.range};
    if (arguments.report && m_disk_error.empty()) m_report = std::make_unique<OutputFile>(*arguments.report);
}

// Without --disk, the disk has its directory's name. A disk that is in the library keeps its name there.
void BatchCommand::NameDisk() {
    const std::string directory = host::AbsolutePath(run::MessageDirectoryOf(m_request.disk));
    library::Library library(*m_arguments.library, library::Access::kWrite);
    const std::string name = recorder::DiskNames().NameOf(library, directory);
    m_recorder_options.context.disk = name;
    if (name.empty()) {
        PrintNote(m_request.disk + ": recorded without a name, as before");
    } else if (name != recorder::UsualDiskName(directory)) {
        PrintNote(m_request.disk + ": recorded as the disk \"" + name +
                  "\", since the library has another of its name");
    }
}

// Numbers whose recording is up to date are not imported again. Files that they lack are written from the library.
void BatchCommand::SkipRecorded() {
    library::Library library(*m_arguments.library, library::Access::kWrite);
    const recorder::RecordingContext& context = m_recorder_options.context;
    const std::set<int> numbers =
        recorder::UpToDateNumbers(library, context, m_interval.first, m_interval.last, m_digests);
    for (const int number : numbers) {
        if (WasInterrupted()) break;
        m_progress.AddSkipped();
        if (!m_arguments.directory || recorder::HasRecordingFiles(number, *m_arguments.directory, true)) continue;
        if (const auto recording = library.Find({context.disk, number}))
            recorder::WriteRecordingFiles(*recording, *m_arguments.directory);
    }
    if (!numbers.empty()) m_request.ranges = recorder::RangesWithout(numbers, m_interval.first, m_interval.last);
}

run::BatchOutcome BatchCommand::RunModule() {
    ItemObserver items(m_progress);
    std::unique_ptr<recorder::BatchRecorder> recorder;
    if (Records()) {
        recorder = std::make_unique<recorder::BatchRecorder>(
            m_recorder_options, m_digests, [this](const recorder::RecordedItem& item) { m_progress.Add(item); });
    }
    if (recorder) {
        m_observers.Add(recorder->Pictures());
        m_observers.Add(*recorder);
    } else {
        m_observers.Add(items);
    }
    if (m_request.warnings) m_observers.PrintWarnings();
    run::BatchOutcome outcome = run::RunBatch(m_request, m_observers.All());
    if (recorder) recorder->Finish();
    return outcome;
}

ExitCode BatchCommand::Run() {
    if (!m_disk_error.empty() && !m_arguments.trace) throw CommandError(m_disk_error);
    PrintDirectoryNotes(m_request.host.maps, m_request.fonts);
    HandleInterrupts();
    m_request.stop = WasInterrupted;
    if (m_arguments.library && !m_arguments.name && m_disk_error.empty()) NameDisk();
    if (m_arguments.resume && m_disk_error.empty() && m_interval.first <= m_interval.last) SkipRecorded();
    run::BatchOutcome outcome;
    if (!m_request.ranges.empty()) {
        outcome = RunModule();
    } else if (WasInterrupted()) {
        outcome.end = run::BatchEnd::kStopped;
    }
    m_observers.CommitTrace();
    const std::string& disk = m_request.disk;
    if (outcome.end == run::BatchEnd::kRefused) throw CommandError(disk + ": " + outcome.failure);
    if (!m_disk_error.empty()) throw CommandError(m_disk_error);
    m_progress.Close();
    if (m_report) WriteReport(Report(outcome));
    if (m_arguments.json) PrintJson(Report(outcome));
    m_settings.PrintAnyNote();
    if (outcome.end == run::BatchEnd::kStopped) throw CommandError(disk + ": stopped before the end of the range");
    if (!outcome.order_breaches.empty())
        throw CommandError(disk + ": the module violated its contract: " + outcome.order_breaches.front());
    const std::size_t failed = m_progress.FailureCount();
    if (failed == 1) throw CommandError(m_progress.FirstFailure());
    if (failed > 1) {
        throw CommandError(std::to_string(failed) + " numbers failed, the first: " + m_progress.FirstFailure());
    }
    return ExitCode::kDone;
}

nlohmann::ordered_json BatchCommand::Report(const run::BatchOutcome& outcome) const {
    nlohmann::ordered_json report = {{"version", document::kJsonVersion},
                                     {"type", "report"},
                                     {"disk", m_request.disk},
                                     {"first", m_interval.first},
                                     {"last", m_interval.last},
                                     {"stopped", outcome.end == run::BatchEnd::kStopped}};
    report.update(m_progress.Report());
    return report;
}

void BatchCommand::WriteReport(const nlohmann::ordered_json& report) {
    constexpr auto kReplaceBadUtf8 = nlohmann::ordered_json::error_handler_t::replace;
    m_report->Write(report.dump(2, ' ', false, kReplaceBadUtf8) + "\n");
    m_report->Commit();
}

void AddInputs(CLI::App& command, BatchArguments& arguments) {
    run::BatchRequest& request = arguments.request;
    AddArgument(command, "DISK", request.disk, "the disk: a directory that contains MESSAGES and MACHINE")
        .check(CheckPath, "");
    AddRange(command, arguments.range);
    AddPath(command, "--fonts", request.fonts, "DIR", "the directory of the font files [MACHINE on the disk]");
    AddMaps(command, request.host.maps);
    AddSettings(command, arguments.settings);
}

void AddOutputs(CLI::App& command, BatchArguments& arguments) {
    AddPath(command, "--library", arguments.library, "FILE", "record each message in a library");
    AddText(command, "--disk", arguments.name, "NAME",
            "with --library: the name of the disk [its directory's]; a library contains each number once per disk");
    command.add_flag(
        "--resume", arguments.resume,
        "with --library: skip numbers that are already recorded, with the same options and from unchanged files");
    AddPath(command, "--out", arguments.directory, "DIR",
            "write each message as a picture, NUMBER.png, and as a JSON document, NUMBER.json");
    AddSmall(command, arguments.effort);
    AddJobs(command, arguments.jobs, "threads that encode pictures");
    AddPath(command, "--report", arguments.report, "FILE", "write a summary of the run as JSON");
    AddJson(command, arguments.json, "print one JSON object per message and the summary, each in one line");
    AddTrace(command, arguments.trace);
    AddTracePixels(command, arguments.pixels);
}

}  // namespace

void AddBatchCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<BatchArguments>();
    CLI::App& command = *app.add_subcommand(
        "batch", "Imports a range of messages from a disk through the module's batch dialog and records them.");
    AddInputs(command, *arguments);
    AddOutputs(command, *arguments);
    command.add_flag("--warnings", arguments->request.warnings,
                     "turn the module's warnings on and print each message box on standard error");
    AddFontPrompt(command, arguments->request.box_answer, arguments->request.browse);
    AddHostOptions(command, arguments->request.host, arguments->request.rgba);
    AddExample(command, "zeltrans batch DISK 1 9999 --library messages.zellib --resume");
    command.callback([arguments, &run] {
        CheckOneOutput(arguments->json, arguments->trace);
        if (arguments->resume && !arguments->library) throw CLI::RequiresError("--resume", "--library");
        if (!arguments->name.value_or("").empty() && !arguments->library)
            throw CLI::RequiresError("--disk", "--library");
        run = [arguments] { return BatchCommand(*arguments).Run(); };
    });
}

}  // namespace zel::cli
