#include "programs/cli/disk_batch.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <utility>

#include <nlohmann/json.hpp>

#include "base/fold_case.h"
#include "base/text.h"
#include "host/document/json_version.h"
#include "host/document/message_warnings.h"
#include "host/native_path.h"
#include "host/recorder/resume.h"
#include "host/run/file_error.h"
#include "host/run/import_paths.h"
#include "module/contract/message_id.h"
#include "module/contract/records/psos_header.h"
#include "platform/system/files.h"
#include "programs/cli/archive_disks.h"
#include "programs/cli/command.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/output_check.h"
#include "programs/cli/recorded_directory.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

/// Names in a line about files that are left out.
constexpr std::size_t kMaxShownNames = 5;

recorder::RecorderOptions RecorderOptionsOf(const BatchArguments& arguments, const run::BatchRequest& request,
                                            recorder::FileDigests& digests) {
    recorder::RecorderOptions options;
    options.context.disk = arguments.name.value_or("");
    options.context.font_directory = run::FontDirectoryOf(request);
    options.context.png_effort = arguments.effort;
    options.context.options = recorder::DescribeOptions(request.host, digests);
    options.library = arguments.library;
    options.directory = arguments.directory;
    options.exact = arguments.exact;
    options.jobs = static_cast<std::size_t>(arguments.jobs);
    return options;
}

run::BatchRequest RequestFor(const BatchArguments& arguments, std::string disk) {
    run::BatchRequest request = arguments.request;
    request.disk = std::move(disk);
    request.ranges = arguments.numbers.Ranges();
    request.stop = WasInterrupted;
    return request;
}

/// Reports the numbers of a batch that records nothing, with their warnings.
class ItemObserver : public host::HostObserver {
  public:
    explicit ItemObserver(std::function<void(recorder::RecordedItem)> add) : m_add(std::move(add)) {}
    void OnMessage(const document::MessageRecord& message) override { m_warnings = document::WarningsOf(message); }
    void OnBatchItem(const host::BatchItem& item) override {
        std::vector<std::string> warnings = std::exchange(m_warnings, {});
        if (item.outcome != host::ItemOutcome::kRecorded) warnings.clear();
        m_add({item, std::move(warnings), false});
    }

  private:
    const std::function<void(recorder::RecordedItem)> m_add;
    std::vector<std::string> m_warnings;
};

/// The files that --out makes: NUMBER.png and NUMBER.json.
bool IsRecordingFile(std::string_view name) {
    constexpr std::size_t kDigits = 4;
    const std::string_view end = name.substr(std::min(name.size(), kDigits));
    return CountDigits(name) == kDigits && (end == ".png" || end == ".json");
}

/// A name that is one part of a path.
std::string FolderName(std::string name) {
    std::ranges::replace(name, '/', '_');
    return name.empty() || name == "." || name == ".." ? "_" + name : name;
}

std::string MessageDirectory(const std::string& disk) {
    return host::AbsolutePath(run::MessageDirectoryOf(disk));
}

/// Where the pictures in a directory are from, if that is another disk; otherwise empty.
/// @param messages  the directory of the disk's messages, as it is recorded.
std::string OtherSource(const std::string& directory, const std::string& messages) {
    const auto resolved = [](const fs::path& path) {
        std::error_code error;
        const fs::path result = fs::weakly_canonical(path, error);
        return error ? path : result;
    };
    const std::string source = SourceOfDocuments(directory);
    return source.empty() || resolved(source) == resolved(messages) ? std::string() : source;
}

/// Empty if the disk has no message of the number.
std::string NumberedMessageFile(const std::string& disk, int number) {
    const std::string file = run::MessageDirectoryOf(disk) + "/" + base::NumberedName(number);
    return run::FindMessageFile(run::ImportPathsOf(file, std::nullopt));
}

/// Whether the module's batch opens a file under its number: .0012, or 0012 unless there is also .0012.
bool IsFoundByNumber(const fs::path& file) {
    const std::string name = file.filename().string();
    const std::string digits(WithoutLeadingDot(name));
    constexpr std::size_t kDigits = 4;
    if (digits.size() != kDigits || CountDigits(digits) != kDigits) return false;
    std::error_code ignored;
    return name != digits || !fs::exists(file.parent_path() / ("." + digits), ignored);
}

/// The messages and RGBA pictures of a directory that no number selects, sorted.
std::vector<std::string> MessagesWithoutNumber(const std::string& directory) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator it(directory, error), end; !error && it != end; it.increment(error)) {
        if (IsFoundByNumber(it->path())) continue;
        const std::optional<std::uint32_t> type = run::FileType(it->path().string());
        if (type && (*type == kMessageFileType || IsRgbaFileType(*type)))
            names.push_back(it->path().filename().string());
    }
    std::ranges::sort(names);
    return names;
}

std::string LeftOutText(const std::vector<std::string>& names) {
    std::string text = "no number from 0 to 9999 selects them:";
    for (std::size_t i = 0; i < names.size() && i < kMaxShownNames; ++i) text += ' ' + names[i];
    if (names.size() > kMaxShownNames) text += " and " + std::to_string(names.size() - kMaxShownNames) + " more";
    return text;
}

}  // namespace

void CheckBatchFiles(const BatchArguments& arguments, const std::optional<std::string>& directory) {
    CommandFiles files;
    run::BatchRequest request = arguments.request;
    for (const std::string& disk : arguments.disks) {
        if (ArchiveDisks::MayBeArchive(disk)) files.Read(disk, "the archive");
        request.disk = disk;
        files.SearchByModule(run::MessageDirectoryOf(disk));
        files.SearchByModule(run::FontDirectoryOf(request));
    }
    if (request.browse) files.ReadByModule(*request.browse, "the file of --browse");
    files.ReadNameLists(request.host.maps);
    files.ReadSettings(arguments.settings);
    if (arguments.library) files.WriteLibrary(*arguments.library);
    files.Write(arguments.report, "--report");
    files.Write(arguments.trace, "--trace");
    if (directory) files.WriteInto(*directory, IsRecordingFile);
    CheckOutputs(files);
}

DiskBatch::DiskBatch(const BatchArguments& arguments, BatchSession& session, BatchDisk disk)
    : m_arguments(arguments),
      m_session(session),
      m_disk(std::move(disk)),
      m_request(RequestFor(arguments, m_disk.directory)),
      m_disk_error(m_disk.error.empty() ? m_disk.relocation.InText(run::DiskError(m_request)) : m_disk.error),
      m_observers(arguments.trace, arguments.pixels),
      m_recorder_options(RecorderOptionsOf(arguments, m_request, session.digests)),
      m_progress(m_disk_error.empty() ? BatchStyle(arguments.json) : BatchProgress::Style::kNothing, m_disk.name,
                 arguments.numbers) {
    m_recorder_options.context.relocation = m_disk.relocation;
}

std::string DiskBatch::RecordedDirectory() const {
    return m_disk.relocation.Recorded(MessageDirectory(m_request.disk));
}

std::string DiskBatch::UsualName() const {
    return m_disk.usual_name.empty() ? recorder::UsualDiskName(RecordedDirectory()) : m_disk.usual_name;
}

// Texts of the module and of the system name the directory in which an archive is unpacked.
void DiskBatch::Add(recorder::RecordedItem item) {
    item.item.reason = m_disk.relocation.InText(std::move(item.item.reason));
    for (std::string& warning : item.warnings) warning = m_disk.relocation.InText(std::move(warning));
    m_progress.Add(item);
}

// Without --disk, the disk has its directory's name. A disk that is in the library keeps its name there.
void DiskBatch::NameDisk() {
    library::Library library(*m_arguments.library, library::Access::kWrite);
    const std::string name = m_session.names.NameOf(library, RecordedDirectory(), UsualName());
    m_recorder_options.context.disk = name;
    if (name.empty()) {
        PrintNote(m_disk.name + ": recorded without a name, as before");
    } else if (name != UsualName()) {
        PrintNote(m_disk.name + ": recorded as the disk \"" + name + "\", since the library has another of its name");
    }
}

// Several disks have a folder each, with a name that none of the others and no other disk's pictures have.
void DiskBatch::ChooseDirectory() {
    const std::string& recorded = m_recorder_options.context.disk;
    const std::string name = FolderName(recorded.empty() ? UsualName() : recorded);
    const auto path_of = [&](const std::string& folder) {
        return (fs::path(*m_arguments.directory) / folder).string();
    };
    const auto is_used = [&](const std::string& folder) {
        return std::ranges::any_of(m_session.folders,
                                   [&](const std::string& other) { return base::EqualsFolded(other, folder); }) ||
               !OtherSource(path_of(folder), RecordedDirectory()).empty();
    };
    std::string folder = name;
    for (int count = 2; is_used(folder); ++count) folder = name + " (" + std::to_string(count) + ")";
    if (folder != name) PrintNote(m_disk.name + ": pictures in " + path_of(folder));
    m_session.folders.push_back(folder);
    m_recorder_options.directory = path_of(folder);
    CheckBatchFiles(m_arguments, m_recorder_options.directory);
}

// The pictures of two disks have the same names.
void DiskBatch::CheckDirectory() const {
    const std::string source = OtherSource(*m_arguments.directory, RecordedDirectory());
    if (source.empty()) return;
    throw CommandError(*m_arguments.directory + ": contains the pictures of another disk, from " + source +
                       "; name another directory for those of " + m_disk.name);
}

// Numbers whose recording is up to date are not imported again. Files that they lack are written from the library.
void DiskBatch::SkipRecorded() {
    library::Library library(*m_arguments.library, library::Access::kWrite);
    const recorder::RecordingContext& context = m_recorder_options.context;
    const std::optional<std::string>& directory = m_recorder_options.directory;
    m_request.ranges.clear();
    for (const Interval& interval : m_arguments.numbers.Intervals()) {
        const std::set<int> numbers =
            recorder::UpToDateNumbers(library, context, interval.first, interval.last, m_session.digests);
        for (const int number : numbers) {
            if (WasInterrupted()) break;
            m_progress.AddUnchanged(number);
            if (!directory || recorder::HasRecordingFiles(number, *directory, true)) continue;
            const auto recording = library.Find({context.disk, number});
            if (!recording) continue;
            const auto warnings = recorder::WriteRecordingFiles(*recording, NumberedMessageFile(m_request.disk, number),
                                                                m_recorder_options.exact, *directory);
            for (const std::string& warning : warnings) PrintWarning(base::NumberedName(number) + ": " + warning);
        }
        std::vector<host::NumberRange> ranges = recorder::RangesWithout(numbers, interval.first, interval.last);
        // The module runs no range that ends at 0.
        if (!ranges.empty() && ranges.front().last == "0") {
            if (!NumberedMessageFile(m_request.disk, 0).empty()) {
                ranges.front().last = "1";
            } else {
                m_progress.Add({{0, host::ItemOutcome::kMissing, {}}, {}, false});
                ranges.erase(ranges.begin());
            }
        }
        m_request.ranges.insert(m_request.ranges.end(), ranges.begin(), ranges.end());
    }
}

run::BatchOutcome DiskBatch::RunModule() {
    ItemObserver items([this](recorder::RecordedItem item) { Add(std::move(item)); });
    std::unique_ptr<recorder::BatchRecorder> recorder;
    if (Records()) {
        recorder = std::make_unique<recorder::BatchRecorder>(m_recorder_options, m_session.digests,
                                                             [this](const recorder::RecordedItem& item) { Add(item); });
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

void DiskBatch::Run() {
    if (!m_disk_error.empty() && !m_arguments.trace) throw CommandError(m_disk_error);
    if (m_session.has_several_disks) m_progress.PrintHeading();
    if (m_arguments.library && !m_arguments.name && m_disk_error.empty()) NameDisk();
    if (m_arguments.directory && m_disk_error.empty())
        m_session.has_several_disks ? ChooseDirectory() : CheckDirectory();
    if (m_arguments.resume && m_disk_error.empty() && !m_arguments.numbers.Intervals().empty()) SkipRecorded();
    run::BatchOutcome outcome;
    if (!m_request.ranges.empty()) {
        outcome = RunModule();
    } else if (WasInterrupted()) {
        outcome.end = run::BatchEnd::kStopped;
    }
    m_observers.CommitTrace();
    if (outcome.end == run::BatchEnd::kRefused)
        throw CommandError(m_disk.relocation.InText(m_disk.name + ": " + outcome.failure));
    if (!m_disk_error.empty()) throw CommandError(m_disk_error);
    m_has_run = true;
    m_stopped = outcome.end == run::BatchEnd::kStopped;
    if (m_arguments.numbers.IsAll() && !m_stopped)
        m_left_out =
            MessagesWithoutNumber(system::NativePath(system::ModulePath(MessageDirectory(m_request.disk)).c_str()));
    m_progress.Close();
    ThrowFailure(outcome);
}

void DiskBatch::ThrowFailure(const run::BatchOutcome& outcome) const {
    const std::string& disk = m_disk.name;
    if (m_stopped) throw CommandError(disk + ": stopped before the end of the range");
    if (!outcome.order_breaches.empty())
        throw CommandError(disk + ": the module violated its contract: " + outcome.order_breaches.front());
    const std::size_t failed = m_progress.FailureCount();
    if (!m_left_out.empty()) {
        const std::string left_out = disk + ": left out since " + LeftOutText(m_left_out);
        if (failed == 0) throw CommandError(left_out);
        PrintError(left_out);
    }
    if (failed == 1) throw CommandError(m_progress.FirstFailure());
    if (failed > 1)
        throw CommandError(std::to_string(failed) + " numbers failed, the first: " + m_progress.FirstFailure());
    if (m_arguments.strict && m_progress.WarningCount() > 0)
        throw CommandError(disk + ": " + base::Counted(m_progress.WarningCount(), "message") +
                           " with warnings, which --strict takes as failures");
}

nlohmann::ordered_json DiskBatch::Report() const {
    const std::vector<Interval>& intervals = m_arguments.numbers.Intervals();
    nlohmann::ordered_json report = {{"version", document::kJsonVersion},
                                     {"type", "report"},
                                     {"disk", m_disk.name},
                                     {"first", intervals.empty() ? 0 : intervals.front().first},
                                     {"last", intervals.empty() ? 0 : intervals.back().last},
                                     {"stopped", m_stopped}};
    report.update(m_progress.Report());
    report["left_out"] = m_left_out;
    return report;
}

}  // namespace zel::cli
