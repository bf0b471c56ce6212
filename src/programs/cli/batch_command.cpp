#include "programs/cli/batch_command.h"

#include <algorithm>
#include <memory>
#include <set>
#include <thread>
#include <vector>

#include <nlohmann/json.hpp>

#include "host/native_path.h"
#include "host/recorder/batch_recorder.h"
#include "host/recorder/resume.h"
#include "host/run/batch_run.h"
#include "module/contract/message_id.h"
#include "platform/system/files.h"
#include "programs/cli/batch_progress.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/output_file.h"
#include "programs/cli/settings_scope.h"
#include "programs/cli/trace_output.h"
#include "programs/cli/warnings_printer.h"

namespace zel::cli {

namespace {

struct BatchArguments {
    run::BatchRequest request;
    host::NumberRange range;
    std::optional<std::string> library, directory, report, trace, settings;
    std::string name;
    host::TracePixels pixels = host::TracePixels::kNo;
    bool resume = false;
    unsigned jobs = std::max(1U, std::thread::hardware_concurrency());

    bool Records() const { return library || directory; }
};

/// First and last of a range that the module takes; an empty one for any other.
struct Span {
    int first = 0, last = -1;
};
Span SpanOf(const host::NumberRange& range) {
    const std::string_view first = WithoutLeadingDot(range.first), last = WithoutLeadingDot(range.last);
    if (CountDigits(first) != first.size() || CountDigits(last) != last.size()) return {};
    const Span span{MessageNumberOf(first), MessageNumberOf(last)};
    return span.last >= 1 && span.last <= kLargestNumber && span.first <= span.last ? span : Span{};
}

/// Hands the numbers of a batch that nothing is recorded of straight on.
class ItemListener : public host::HostObserver {
  public:
    explicit ItemListener(BatchProgress& progress) : m_progress(progress) {}
    void OnBatchItem(const host::BatchItem& item) override { m_progress.Hear({item, {}}); }

  private:
    BatchProgress& m_progress;
};

class BatchCommand {
  public:
    explicit BatchCommand(const BatchArguments& arguments);

    ExitCode Run();

  private:
    void LeaveOutWhatIsRecorded();
    run::BatchOutcome RunModule();
    void WriteReport(const run::BatchOutcome& outcome);

    const BatchArguments& m_arguments;
    run::BatchRequest m_request;
    const Span m_span;
    SettingsScope m_settings;
    std::unique_ptr<TraceOutput> m_trace;
    std::unique_ptr<OutputFile> m_report;
    recorder::FileDigests m_digests;
    recorder::RecorderOptions m_recorder_options;
    BatchProgress m_progress;
};

// Whatever can't be written is told before the module is asked for anything.
BatchCommand::BatchCommand(const BatchArguments& arguments)
    : m_arguments(arguments),
      m_request(arguments.request),
      m_span(SpanOf(arguments.range)),
      m_settings(arguments.settings),
      m_progress(HowToShow(arguments.trace), m_span.last - m_span.first + 1) {
    m_request.ranges = {arguments.range};
    if (arguments.report) m_report = std::make_unique<OutputFile>(*arguments.report);
    if (arguments.trace) m_trace = std::make_unique<TraceOutput>(*arguments.trace, arguments.pixels);
    m_recorder_options.context.disk = arguments.name;
    m_recorder_options.context.font_directory =
        m_request.fonts
            ? host::AbsolutePath(*m_request.fonts)
            : system::NativePath(host::MachineDirectory(
                                     system::ModulePath(host::AbsolutePath(run::MessageDirectoryOf(m_request.disk))))
                                     .c_str());
    m_recorder_options.context.options = recorder::DescribeOptions(m_request.host, m_digests);
    m_recorder_options.library = arguments.library;
    m_recorder_options.directory = arguments.directory;
    m_recorder_options.jobs = arguments.jobs;
}

// What is recorded but not among the files any more is written from the library.
void BatchCommand::LeaveOutWhatIsRecorded() {
    library::Library library(*m_arguments.library, library::Access::kWrite);
    const recorder::RecordingContext& context = m_recorder_options.context;
    const std::set<int> numbers = recorder::UpToDateNumbers(library, context, m_span.first, m_span.last, m_digests);
    for (const int number : numbers) {
        m_progress.LeftOut();
        if (!m_arguments.directory || recorder::HasRecordingFiles(number, *m_arguments.directory, true)) continue;
        if (const auto recording = library.Find({context.disk, number}))
            recorder::WriteRecordingFiles(*recording, *m_arguments.directory);
    }
    if (!numbers.empty()) m_request.ranges = recorder::RangesWithout(numbers, m_span.first, m_span.last);
}

run::BatchOutcome BatchCommand::RunModule() {
    WarningsPrinter warnings;
    ItemListener listener(m_progress);
    std::unique_ptr<recorder::BatchRecorder> recorder;
    if (m_arguments.Records()) {
        recorder = std::make_unique<recorder::BatchRecorder>(
            m_recorder_options, m_digests, [this](const recorder::RecordedItem& item) { m_progress.Hear(item); });
    }
    std::vector<host::HostObserver*> observers;
    if (m_trace) observers.push_back(&m_trace->Observer());
    if (recorder) observers.push_back(&recorder->Pictures());
    observers.push_back(recorder ? static_cast<host::HostObserver*>(recorder.get()) : &listener);
    if (m_arguments.request.warnings) observers.push_back(&warnings);
    const run::BatchOutcome outcome = run::RunBatch(m_request, observers);
    if (recorder) recorder->Finish();
    return outcome;
}

ExitCode BatchCommand::Run() {
    HeedInterrupts();
    m_request.stop = WasInterrupted;
    if (m_arguments.resume && m_span.first <= m_span.last) LeaveOutWhatIsRecorded();
    run::BatchOutcome outcome;
    if (!m_request.ranges.empty()) outcome = RunModule();
    if (m_trace) m_trace->Commit();
    const std::string& disk = m_request.disk;
    if (outcome.end == run::BatchEnd::kRefused) throw CommandError(disk + ": " + outcome.failure);
    m_progress.Close();
    if (m_report) WriteReport(outcome);
    if (!m_settings.Note().empty()) SayNote(m_settings.Note());
    if (outcome.end == run::BatchEnd::kStopped) throw CommandError(disk + ": stopped before the end of the range");
    if (!outcome.order_breaches.empty())
        throw CommandError(disk + ": the module broke its contract: " + outcome.order_breaches.front());
    const std::size_t failed = m_progress.FailureCount();
    if (failed == 1) throw CommandError(m_progress.FirstFailure());
    if (failed > 1) {
        throw CommandError(std::to_string(failed) + " numbers failed, the first: " + m_progress.FirstFailure());
    }
    return ExitCode::kDone;
}

void BatchCommand::WriteReport(const run::BatchOutcome& outcome) {
    nlohmann::ordered_json report = {{"disk", m_request.disk},
                                     {"first", m_span.first},
                                     {"last", m_span.last},
                                     {"stopped", outcome.end == run::BatchEnd::kStopped}};
    report.update(m_progress.Report());
    constexpr auto kReplaceBadUtf8 = nlohmann::ordered_json::error_handler_t::replace;
    m_report->Write(report.dump(2, ' ', false, kReplaceBadUtf8) + "\n");
    m_report->Commit();
}

void AddInputs(CLI::App& command, BatchArguments& arguments) {
    run::BatchRequest& request = arguments.request;
    command.add_option("DISK", request.disk, "the disk: a directory with MESSAGES and MACHINE")
        ->required()
        ->type_name("")
        ->check(NotEmpty, "");
    command.add_option("FIRST", arguments.range.first, "the first number")->required()->type_name("");
    command.add_option("LAST", arguments.range.last, "the last number, up to 9999")->required()->type_name("");
    AddPath(command, "--fonts", request.fonts, "DIR", "the font directory [MACHINE on the disk]");
    AddMaps(command, request.host.maps);
    AddSettings(command, arguments.settings);
}

void AddOutputs(CLI::App& command, BatchArguments& arguments) {
    AddPath(command, "--library", arguments.library, "FILE", "record each message in a library");
    command
        .add_option("--disk", arguments.name,
                    "with --library: name of the disk, so that a library can hold the same number of several disks")
        ->type_name("NAME");
    command.add_flag("--resume", arguments.resume,
                     "with --library: leave out numbers recorded already, with these options, from unchanged files");
    AddPath(command, "--out", arguments.directory, "DIR",
            "write a picture and a document of each message, NUMBER.png and NUMBER.json");
    command.add_option("--jobs", arguments.jobs, "threads that encode pictures [one a core]")
        ->type_name("N")
        ->check(CLI::Range(1U, 256U), "");
    AddPath(command, "--report", arguments.report, "FILE", "write the summary as JSON");
    AddPath(command, "--trace", arguments.trace, "FILE|-",
            "write all that the host hears, one JSON object a line; - is standard output");
    command.add_flag_callback(
        "--pixels", [&arguments] { arguments.pixels = host::TracePixels::kYes; },
        "with --trace: size and checksum of each character's pixels");
}

}  // namespace

void AddBatchCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<BatchArguments>();
    CLI::App& command = *app.add_subcommand(
        "batch", "Imports a range of messages of a disk through the module's batch dialog, and records them.");
    AddInputs(command, *arguments);
    AddOutputs(command, *arguments);
    command.add_flag("--warnings", arguments->request.warnings,
                     "leave warnings on, and print each box on standard error");
    AddFontPrompt(command, arguments->request.box_answer, arguments->request.browse);
    AddHostOptions(command, arguments->request.host, arguments->request.rgba);
    AddExample(command, "zeltrans batch DISK 1 9999 --library messages.zellib --resume");
    command.callback([arguments, &run] {
        if (arguments->resume && !arguments->library) throw CLI::RequiresError("--resume", "--library");
        if (!arguments->name.empty() && !arguments->library) throw CLI::RequiresError("--disk", "--library");
        run = [arguments] { return BatchCommand(*arguments).Run(); };
    });
}

}  // namespace zel::cli
