#include "programs/cli/verify_command.h"

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <CLI/App.hpp>

#include "base/terminal_text.h"
#include "host/archive/archived_disks.h"
#include "host/archive/unpacked_archive.h"
#include "inspect/font_use.h"
#include "inspect/inspect.h"
#include "inspect/verify_text.h"
#include "inspect/words.h"
#include "programs/cli/archive_faults.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/file_tree.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/options.h"
#include "programs/cli/standard_input.h"
#include "programs/cli/verify_json.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;
using inspect::Count;

struct VerifyArguments {
    std::vector<std::string> paths;
    bool json = false;
};

/// Whether an import could be asked for a file by its number: what follows its last dot is digits.
bool HasNumber(std::string_view name) {
    name.remove_prefix(std::min(name.find_last_of('/') + 1, name.size()));
    const std::string_view digits = name.substr(name.find_last_of('.') + 1);
    return !digits.empty() && std::ranges::all_of(digits, [](char c) { return c >= '0' && c <= '9'; });
}

class Verify {
  public:
    explicit Verify(const VerifyArguments& arguments) : m_arguments(arguments) {}

    ExitCode Run() {
        HandleInterrupts();
        for (const std::string& path : m_arguments.paths) {
            VerifyCounts before = m_summary.counts;
            before.missing_fonts = m_summary.missing_fonts.size();
            std::error_code error;
            if (fs::is_directory(path, error)) {
                VerifyDirectory(path, path);
            } else {
                VerifyNamed(path);
            }
            if (WasInterrupted()) return InterruptCode();
            ReportFaults(path, before);
        }
        ShowSummary();
        std::cout.flush();
        return m_summary.HasFault() || !m_is_complete ? ExitCode::kNotDone : ExitCode::kDone;
    }

  private:
    void VerifyNamed(const std::string& path) {
        const bool is_input = IsStandardInput(path);
        const std::string name = is_input ? kStandardInput : path;
        try {
            inspect::FileReport report =
                is_input ? inspect::InspectBytes(ReadStandardInput(), name, inspect::Depth::kEveryByte)
                         : inspect::InspectFile(path, inspect::Depth::kEveryByte);
            if (report.verdict == inspect::Verdict::kForeign && !is_input && VerifyArchive(path)) return;
            Show(report);
        } catch (const std::runtime_error& error) {
            ShowUnreadable(name, error.what());
        }
    }

    /// @return false if the file is no archive, or has no disk.
    bool VerifyArchive(const std::string& file) {
        std::optional<archive::UnpackedArchive> unpacked;
        try {
            unpacked.emplace(file, archive::Wanted::kDisks, WasInterrupted);
        } catch (const std::runtime_error&) {
            return false;
        }
        if (unpacked->WasStopped()) return true;
        if (archive::DisksIn(unpacked->Root(), file).empty()) return false;
        PrintArchiveFaults(file, *unpacked);
        m_is_complete = m_is_complete && unpacked->IsWhole();
        VerifyDirectory(unpacked->Root(), file);
        return true;
    }

    /// @param name  of the directory in texts.
    void VerifyDirectory(const fs::path& directory, const std::string& name) {
        m_is_one_file = false;
        const FileTree tree = FindFiles(directory);
        inspect::FontUse fonts;
        for (const fs::path& file : tree.files) {
            if (WasInterrupted()) return;
            const std::string relative = file.lexically_relative(directory).string();
            const std::string shown = (fs::path(name) / relative).string();
            try {
                inspect::FileReport report = inspect::InspectFile(file, inspect::Depth::kEveryByte);
                report.name = shown;
                // Other files may be on a disk, but not in place of a message or a font.
                if (report.verdict == inspect::Verdict::kForeign && !HasNumber(relative)) {
                    report.findings.clear();
                }
                fonts.Add(report, relative);
                Show(report);
            } catch (const std::runtime_error& error) {
                ShowUnreadable(shown, error.what());
            }
        }
        for (const UnlistedDirectory& unlisted : tree.unlisted) {
            m_summary.unlisted.push_back(name + ": " + unlisted.Text());
            PrintError(m_summary.unlisted.back());
        }
        AddFonts(fonts, name);
    }

    void AddFonts(const inspect::FontUse& fonts, const std::string& name) {
        const auto at = [&](const std::string& path) { return (fs::path(name) / path).string(); };
        for (inspect::MissingFont& font : fonts.Missing()) {
            font.disk = font.disk.empty() ? name : at(font.disk);
            if (!font.file.empty()) font.file = at(font.file);
            for (std::string& message : font.messages) message = at(message);
            m_summary.missing_fonts.push_back(std::move(font));
        }
        for (inspect::UnusedFont& font : fonts.Unused()) {
            font.disk = font.disk.empty() ? name : at(font.disk);
            font.file = at(font.file);
            m_summary.unused_fonts.push_back(std::move(font));
        }
    }

    void Show(const inspect::FileReport& report) {
        Add(report);
        if (m_arguments.json) {
            std::cout << VerifyJson(report) << '\n';
        } else {
            PrintLines(inspect::VerifyText(report, IsVerbose()));
        }
    }

    void ShowUnreadable(const std::string& name, const std::string& reason) {
        ++m_summary.counts.unreadable;
        if (m_arguments.json) std::cout << UnreadableVerifyJson(name, reason) << '\n';
        PrintError(name + ": " + reason);
    }

    void Add(const inspect::FileReport& report) {
        const inspect::FindingCounts counts = inspect::CountFindings(report);
        m_summary.counts.faults += counts.faults;
        m_summary.counts.notes += counts.notes;
        if (counts.faults != 0) ++m_summary.counts.files_with_faults;
        switch (report.verdict) {
            case inspect::Verdict::kWhole:
                ++m_summary.counts.whole;
                break;
            case inspect::Verdict::kReadable:
                ++m_summary.counts.readable;
                break;
            case inspect::Verdict::kBroken:
                ++m_summary.counts.broken;
                break;
            case inspect::Verdict::kForeign:
                ++m_summary.counts.foreign;
                break;
        }
    }

    static std::string FaultText(std::uint64_t faults, std::uint64_t files, std::uint64_t missing_fonts) {
        if (faults == 0 && missing_fonts != 0) return Count(missing_fonts, "missing font");
        std::string text = Count(faults, "fault");
        if (files > 1) text += " in " + Count(files, "file");
        return missing_fonts == 0 ? text : text + ", " + Count(missing_fonts, "missing font");
    }

    /// Prints an error for a path with faults.
    /// @param before  the counts before it.
    void ReportFaults(const std::string& path, const VerifyCounts& before) {
        const std::uint64_t faults = m_summary.counts.faults - before.faults,
                            fonts = m_summary.missing_fonts.size() - before.missing_fonts;
        if (faults == 0 && fonts == 0) return;
        PrintError((IsStandardInput(path) ? kStandardInput : path) + ": " +
                   FaultText(faults, m_summary.counts.files_with_faults - before.files_with_faults, fonts));
    }

    void ShowSummary() const {
        if (m_arguments.json) {
            std::cout << VerifySummaryJson(m_summary) << '\n';
            return;
        }
        std::string text;
        for (const inspect::MissingFont& font : m_summary.missing_fonts) {
            text += "fault: " + inspect::MissingFontText(font) +
                    "; import leaves its characters out, and the rest of their rows\n";
        }
        text += UnusedText(inspect::UnusedFont::Reason::kNotNamed, "no message names");
        text += UnusedText(inspect::UnusedFont::Reason::kName, "no import looks for the names of");
        text += UnusedText(inspect::UnusedFont::Reason::kOtherFile, "an import takes the other file of the number of");
        const std::uint64_t files = m_summary.Files();
        if (m_is_one_file) return;
        std::vector<std::string> parts;
        const auto add = [&](std::uint64_t count, const char* what) {
            if (count != 0) parts.push_back(inspect::Number(count) + " " + what);
        };
        const VerifyCounts& counts = m_summary.counts;
        add(counts.whole, "whole");
        add(counts.readable, "readable");
        add(counts.broken, "broken");
        add(counts.foreign, "foreign");
        add(counts.unreadable, "unreadable");
        PrintLines(text + Count(files, "file") + (parts.empty() ? "" : " (" + inspect::Listed(parts) + ")") + ", " +
                   FaultText(counts.faults, counts.files_with_faults, m_summary.missing_fonts.size()) + ", " +
                   Count(counts.notes, "note") + "\n");
    }

    /// A line about the fonts that are not used for one reason; empty without any.
    std::string UnusedText(inspect::UnusedFont::Reason reason, const char* what) const {
        std::vector<std::string> files;
        for (const inspect::UnusedFont& font : m_summary.unused_fonts) {
            if (font.reason == reason) files.push_back(base::TerminalText(font.file));
        }
        if (files.empty()) return {};
        constexpr std::size_t kListed = 8;
        return std::string("note: ") + what + " " + Count(files.size(), "font") + ": " +
               inspect::Listed(files, IsVerbose() ? files.size() : kListed) + "\n";
    }

    const VerifyArguments& m_arguments;
    VerifySummary m_summary;
    /// The only path is a file, which needs no totals.
    bool m_is_one_file = m_arguments.paths.size() == 1;
    /// Nothing of an archive was refused.
    bool m_is_complete = true;
};

}  // namespace

void AddVerifyCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<VerifyArguments>();
    CLI::App& command = *app.add_subcommand("verify", "Holds files against their formats, to the last byte.");
    AddArgument(command, "PATH", arguments->paths,
                "disks or other directories, which are read with their subdirectories, message, font, RGBA picture or "
                "name list files, or archives of disks (zip, tar, ISO 9660); - is standard input");
    AddJson(command, arguments->json, "print one JSON object per file, each in one line, and a summary");
    AddVerbosity(command, true);
    command.get_option("--verbose")->description("list every place, and every field that nothing reads");
    AddExample(command, "zeltrans verify DISK\n  zeltrans verify DISK/MESSAGES/.0012 --verbose");
    command.callback([arguments, &run] {
        if (std::ranges::count_if(arguments->paths, IsStandardInput) > 1)
            throw CLI::ValidationError("PATH", "standard input can be read once");
        run = [arguments] { return Verify(*arguments).Run(); };
    });
}

}  // namespace zel::cli
