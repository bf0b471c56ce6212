#include "programs/cli/batch_command.h"

#include <memory>
#include <string>

#include <CLI/App.hpp>
#include <nlohmann/json.hpp>

#include "base/text.h"
#include "host/document/json_version.h"
#include "programs/cli/archive_disks.h"
#include "programs/cli/batch_arguments.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/disk_batch.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/json_output.h"
#include "programs/cli/options.h"
#include "programs/cli/output_file.h"
#include "programs/cli/run_options.h"
#include "programs/cli/settings_scope.h"

namespace zel::cli {

namespace {

/// The batches of all disks of a command, one after another.
class BatchCommand {
  public:
    explicit BatchCommand(const BatchArguments& arguments);

    ExitCode Run();

  private:
    void RunArchive(const std::string& path);
    void RunDisk(const BatchDisk& disk);
    void WriteReport();

    const BatchArguments& m_arguments;
    SettingsScope m_settings;
    std::unique_ptr<OutputFile> m_report;
    BatchSession m_session{recorder::FileDigests(WasInterrupted), {}, {}, false};
    /// Of each disk.
    nlohmann::ordered_json m_reports = nlohmann::ordered_json::array();
    BatchCounts m_counts;
    /// Of all, as far as the archives have been opened.
    std::size_t m_disk_count;
    std::size_t m_failed_disks = 0;
    /// Something of an archive was refused or couldn't be read.
    bool m_has_bad_archive = false;
};

const BatchArguments& Checked(const BatchArguments& arguments) {
    CheckBatchFiles(arguments,
                    arguments.directory && !arguments.HasSeveralDisks() ? arguments.directory : std::nullopt);
    return arguments;
}

// Opens the report, so that one that cannot be written is reported before the module runs.
BatchCommand::BatchCommand(const BatchArguments& arguments)
    : m_arguments(Checked(arguments)), m_settings(arguments.settings), m_disk_count(arguments.disks.size()) {
    m_session.has_several_disks = arguments.HasSeveralDisks();
    if (arguments.report) m_report = std::make_unique<OutputFile>(*arguments.report);
}

// A disk that fails leaves the others.
void BatchCommand::RunDisk(const BatchDisk& disk) {
    DiskBatch batch(m_arguments, m_session, disk);
    nlohmann::ordered_json failure;
    try {
        batch.Run();
    } catch (const std::runtime_error& error) {
        PrintError(error.what());
        failure = error.what();
        ++m_failed_disks;
    }
    m_counts += batch.Progress().Counts();
    if (!batch.HasRun() && !m_session.has_several_disks) return;
    m_reports.push_back(batch.Report());
    m_reports.back()["failure"] = failure;
    if (m_arguments.json) PrintJson(m_reports.back());
}

// An archive is unpacked for as long as its disks are imported.
void BatchCommand::RunArchive(const std::string& path) {
    std::optional<ArchiveDisks> archive;
    try {
        archive.emplace(path);
    } catch (const std::runtime_error& error) {
        return RunDisk({.name = path, .directory = path, .error = error.what()});
    }
    m_has_bad_archive = m_has_bad_archive || !archive->IsWhole();
    m_disk_count += archive->Disks().size() - 1;
    if (archive->Disks().size() > 1) {
        if (m_arguments.name || m_arguments.trace)
            throw CommandError(path + ": --disk and --trace need a single disk; the archive contains " +
                               std::to_string(archive->Disks().size()));
        m_session.has_several_disks = true;
    }
    for (const BatchDisk& disk : archive->Disks()) {
        if (!WasInterrupted()) RunDisk(disk);
    }
}

ExitCode BatchCommand::Run() {
    PrintDirectoryNotes(m_arguments.request.host.maps, m_arguments.request.fonts);
    HandleInterrupts();
    for (const std::string& disk : m_arguments.disks) {
        if (WasInterrupted()) break;
        if (ArchiveDisks::MayBeArchive(disk)) {
            RunArchive(disk);
        } else {
            RunDisk({.name = disk, .directory = disk});
        }
    }
    if (m_session.has_several_disks) {
        const std::size_t begun = m_reports.size(), all = m_disk_count;
        PrintLine((begun < all ? std::to_string(begun) + " of " : "") + std::to_string(all) +
                  " disks: " + m_counts.Text(!m_arguments.numbers.IsAll()) +
                  (m_failed_disks > 0 ? "; " + base::Counted(m_failed_disks, "disk") + " not done completely" : ""));
    }
    if (m_report && !m_reports.empty()) WriteReport();
    m_settings.PrintAnyNote();
    if (WasInterrupted()) return InterruptCode();
    return m_failed_disks > 0 || m_has_bad_archive ? ExitCode::kNotDone : StrictCode(m_arguments.strict);
}

// The summary of the disk, or a list of those of all disks.
void BatchCommand::WriteReport() {
    const nlohmann::ordered_json report =
        m_session.has_several_disks
            ? nlohmann::ordered_json{{"version", document::kJsonVersion}, {"type", "reports"}, {"disks", m_reports}}
            : m_reports.front();
    constexpr auto kReplaceBadUtf8 = nlohmann::ordered_json::error_handler_t::replace;
    m_report->Write(report.dump(2, ' ', false, kReplaceBadUtf8) + "\n");
    m_report->Commit();
}

void AddInputs(CLI::App& command, BatchArguments& arguments) {
    run::BatchRequest& request = arguments.request;
    AddArgument(command, "DISK", arguments.words,
                "the disks: directories that contain MESSAGES and MACHINE, or archives of such (zip, tar, ISO 9660). "
                "Several disks are recorded one after "
                "another; one that fails leaves the others")
        .check(CheckPath, "");
    // Never filled: the words of NUMBERS arrive among the disks.
    AddNumbers(command, arguments.numbers_in_help, "the whole disk");
    AddPath(command, "--fonts", request.fonts, "DIR", "the directory of the font files [MACHINE on the disk]");
    AddMaps(command, request.host.maps);
    AddSettings(command, arguments.settings);
}

void AddOutputs(CLI::App& command, BatchArguments& arguments) {
    AddNamedFile(command, "--library", arguments.library, "record each message in a library");
    AddText(command, "--disk", arguments.name, "NAME",
            "with --library: the name of the disk [its directory's]; a library contains each number once per disk");
    command.add_flag(
        "--resume", arguments.resume,
        "with --library: skip numbers that are already recorded, with the same options and from unchanged files");
    AddDirectory(command, "--out", arguments.directory,
                 "write each message as a picture, NUMBER.png, and as a JSON document, NUMBER.json; of several disks, "
                 "each into a folder of its name");
    AddExact(command, arguments.exact, "--out");
    AddSmall(command, arguments.effort);
    AddJobs(command, arguments.jobs, "threads that encode pictures");
    AddPath(command, "--report", arguments.report, "FILE|-", "write a summary of the run as JSON");
    AddJson(command, arguments.json, "print one JSON object per message and a summary per disk, each in one line");
    AddTrace(command, arguments.trace);
    AddTracePixels(command, arguments.pixels);
}

// Options that go together, and that have an effect.
void CheckOptions(CLI::App& command, BatchArguments& arguments) {
    try {
        SplitBatchWords(arguments);
    } catch (const InvalidNumbers& error) {
        throw CLI::ValidationError("NUMBERS", error.what());
    }
    Require(command, "--resume", arguments.library.has_value(), "--library");
    Require(command, "--disk", arguments.library.has_value(), "--library");
    Require(command, "--disk", !arguments.HasSeveralDisks(), "a single disk");
    Require(command, "--trace", !arguments.HasSeveralDisks(), "a single disk");
    Require(command, "--exact", arguments.directory.has_value(), "--out");
    Require(command, "--small", arguments.Records(), "--out or --library");
    Require(command, "--jobs", arguments.Records(), "--out or --library");
    Require(command, "--pixels", arguments.trace.has_value(), "--trace");
    RequireFontPrompt(command, arguments.request.warnings, arguments.request.box_answer);
    ReserveStandardOutputFor({{"--report", &arguments.report}, {"--trace", &arguments.trace}}, arguments.json);
}

}  // namespace

void AddBatchCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<BatchArguments>();
    CLI::App& command = *app.add_subcommand(
        "batch", "Imports the messages of disks through the module's batch dialog and records them.");
    AddInputs(command, *arguments);
    AddOutputs(command, *arguments);
    command.add_flag("--warnings", arguments->request.warnings,
                     "turn the module's warnings on and print each message box on standard error");
    AddFontPrompt(command, arguments->request.box_answer, arguments->request.browse);
    AddHostOptions(command, arguments->request.host, arguments->request.rgba);
    AddStrict(command, arguments->strict);
    AddVerbosity(command, true);
    AddExample(command,
               "zeltrans batch DISK --library messages.zellib --resume\n"
               "  zeltrans batch ARCHIVE/* --library messages.zellib --out pictures\n"
               "  zeltrans batch DISK 1-20,31 --out pictures");
    command.callback([arguments, &command, &run] {
        CheckOptions(command, *arguments);
        run = [arguments] { return BatchCommand(*arguments).Run(); };
    });
}

}  // namespace zel::cli
