#include "programs/cli/info_command.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <vector>

#include <CLI/App.hpp>

#include "host/archive/archived_disks.h"
#include "host/archive/unpacked_archive.h"
#include "inspect/inspect.h"
#include "inspect/report_text.h"
#include "inspect/words.h"
#include "programs/cli/archive_faults.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/directory_table.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/options.h"
#include "programs/cli/report_json.h"
#include "programs/cli/standard_input.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

struct InfoArguments {
    std::vector<std::string> files;
    bool json = false, strict = false;
};

class Info {
  public:
    explicit Info(const InfoArguments& arguments) : m_arguments(arguments) {}

    ExitCode Run() {
        for (const std::string& file : m_arguments.files) {
            std::error_code error;
            if (IsStandardInput(file)) {
                ShowReport(kStandardInput, [] { return inspect::InspectBytes(ReadStandardInput(), kStandardInput); });
            } else if (fs::is_directory(file, error)) {
                ShowDirectory(file, file);
            } else {
                ShowFile(file);
            }
            if (WasInterrupted()) return InterruptCode();
        }
        std::cout.flush();
        return m_exit_code;
    }

  private:
    void Fail(const std::string& text) {
        PrintError(text);
        m_exit_code = ExitCode::kNotDone;
    }

    // Reports are separated by a blank line.
    void Show(const std::string& text) {
        if (m_arguments.json) {
            std::cout << text << std::flush;
            return;
        }
        if (m_shown && !IsSilent()) std::cout << '\n';
        m_shown = true;
        PrintLines(text);
    }

    void ShowFile(const std::string& file) {
        ShowReport(file, [&] { return inspect::InspectFile(file); });
    }

    template <class Inspect>
    void ShowReport(const std::string& file, Inspect inspect) {
        try {
            const inspect::FileReport report = inspect();
            if (report.verdict == inspect::Verdict::kForeign && ShowArchive(file)) return;
            Show(m_arguments.json ? ReportJson(report) + "\n" : inspect::ReportText(report));
            const bool good =
                report.verdict == inspect::Verdict::kWhole || report.verdict == inspect::Verdict::kReadable;
            if (!good || (m_arguments.strict && report.verdict != inspect::Verdict::kWhole))
                Fail(file + ": " + inspect::VerdictText(report));
        } catch (const std::runtime_error& error) {
            if (m_arguments.json) Show(UnreadableJson(file, error.what()) + "\n");
            Fail(file + ": " + error.what());
        }
    }

    /// Shows the disks of an archive. @return false if it isn't one, or has none.
    bool ShowArchive(const std::string& file) {
        HandleInterrupts();
        std::optional<archive::UnpackedArchive> unpacked;
        try {
            unpacked.emplace(file, archive::Wanted::kDisks, WasInterrupted);
        } catch (const std::runtime_error&) {
            return false;
        }
        if (unpacked->WasStopped()) return true;
        if (archive::DisksIn(unpacked->Root(), file).empty()) return false;
        PrintArchiveFaults(file, *unpacked);
        if (!unpacked->IsWhole()) m_exit_code = ExitCode::kNotDone;
        ShowDirectory(unpacked->Root(), file);
        return true;
    }

    /// @param name  of the directory in texts.
    void ShowDirectory(const std::string& directory, const std::string& name) {
        const DirectoryTable table(directory, name);
        if (m_arguments.json) {
            for (const DirectoryEntry& entry : table.Entries()) ShowJson(entry, (fs::path(name) / entry.name).string());
        } else {
            Show(table.Text());
        }
        if (!table.Failure().empty()) Fail(name + ": " + table.Failure());
        if (m_arguments.strict && table.DefectCount() != 0)
            Fail(name + ": " + inspect::Count(table.DefectCount(), "file") + " with defects");
    }

    void ShowJson(const DirectoryEntry& entry, const std::string& path) {
        if (!entry.report) return Show(UnreadableJson(path, entry.error) + "\n");
        inspect::FileReport report = *entry.report;
        report.name = path;
        Show(ReportJson(report) + "\n");
    }

    const InfoArguments& m_arguments;
    bool m_shown = false;
    ExitCode m_exit_code = ExitCode::kDone;
};

}  // namespace

void AddInfoCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<InfoArguments>();
    CLI::App& command = *app.add_subcommand("info", "Reports the kind, the contents and the defects of files.");
    AddArgument(command, "FILE", arguments->files,
                "message, font, RGBA picture or name list files, or directories, which are read with their "
                "subdirectories, or archives of disks (zip, tar, ISO 9660); - is standard input");
    AddJson(command, arguments->json, "print one JSON object per file, each in one line");
    command.add_flag("--strict", arguments->strict, "end with exit code 1 if there are defects too");
    AddVerbosity(command, false);
    AddExample(command, "zeltrans info DISK/MESSAGES/.0012\n  zeltrans info DISK");
    command.callback([arguments, &run] {
        if (std::ranges::count_if(arguments->files, IsStandardInput) > 1)
            throw CLI::ValidationError("FILE", "standard input can be read once");
        run = [arguments] { return Info(*arguments).Run(); };
    });
}

}  // namespace zel::cli
