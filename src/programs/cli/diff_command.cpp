#include "programs/cli/diff_command.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>

#include <CLI/App.hpp>

#include "base/regular_file.h"
#include "host/compare/disk_comparison.h"
#include "host/compare/file_comparison.h"
#include "host/compare/library_comparison.h"
#include "host/picture/png_writer.h"
#include "host/run/file_error.h"
#include "host/run/import_paths.h"
#include "platform/system/files.h"
#include "programs/cli/archive_disks.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/diff_output.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/kept_recent_lists.h"
#include "programs/cli/options.h"
#include "programs/cli/output_check.h"
#include "programs/cli/output_file.h"
#include "programs/cli/run_options.h"
#include "programs/cli/settings_scope.h"
#include "programs/cli/spooled_input.h"
#include "programs/cli/standard_input.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

struct DiffArguments {
    DiffOutput output;
    compare::ComparisonOptions options;
    std::optional<std::string> picture, settings, disk;
};

enum class OperandKind { kFile, kDisk, kLibrary };

const char* NameOf(OperandKind kind) noexcept {
    if (kind == OperandKind::kFile) return "a file";
    return kind == OperandKind::kDisk ? "a disk" : "a library";
}

/// What is compared, as far as its name tells.
class Operand {
  public:
    /// @throws CommandError if there is nothing to compare.
    explicit Operand(const std::string& name);

    OperandKind Kind() const noexcept { return m_kind; }
    /// Of the file or the directory.
    const std::string& Path() const noexcept { return m_path; }
    /// A text about the file, as one about the operand.
    std::string Shown(std::string text) const { return m_input ? m_input->Shown(std::move(text)) : text; }

  private:
    void OpenArchive(const std::string& name);

    OperandKind m_kind = OperandKind::kFile;
    std::string m_path;
    std::unique_ptr<SpooledInput> m_input;
    std::unique_ptr<ArchiveDisks> m_archive;
};

bool IsDatabase(const std::string& path) {
    static constexpr std::string_view kBeginning("SQLite format 3\0", 16);
    const std::vector<std::uint8_t> bytes = base::ReadFileBytes(path, kBeginning.size());
    return std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()) == kBeginning;
}

Operand::Operand(const std::string& name) : m_path(name) {
    std::error_code error;
    if (IsStandardInput(name)) {
        m_input = std::make_unique<SpooledInput>("MESSAGES");
        m_path = m_input->Path();
    } else if (fs::is_directory(name, error)) {
        m_kind = OperandKind::kDisk;
        return;
    } else if (!fs::exists(fs::symlink_status(name, error))) {
        // A message may be named by its number.
        const std::string file = run::FindMessageFile(run::ImportPathsOf(name, std::nullopt));
        if (file.empty()) throw CommandError(name + ": there is no such file or directory");
        m_path = file;
    }
    if (const std::string kind = base::OtherFileKind(m_path); !kind.empty())
        throw CommandError(name + ": " + kind + ", not a file");
    try {
        if (IsDatabase(m_path)) {
            m_kind = OperandKind::kLibrary;
            return;
        }
    } catch (const std::runtime_error& failure) {
        throw CommandError(name + ": " + failure.what());
    }
    if (compare::KindOf(m_path) == compare::ComparedKind::kOther) OpenArchive(name);
}

void Operand::OpenArchive(const std::string& name) {
    try {
        m_archive = std::make_unique<ArchiveDisks>(m_path);
    } catch (const CommandError&) {
        throw CommandError(name + ": " + run::ContentError("message", m_path));
    }
    if (WasInterrupted()) return;
    if (m_archive->Disks().size() != 1)
        throw CommandError(name + ": an archive of " + std::to_string(m_archive->Disks().size()) +
                           " disks; only one of a single disk can be compared");
    if (!m_archive->IsWhole()) throw CommandError(name + ": not all of the archive can be read");
    m_kind = OperandKind::kDisk;
    m_path = m_archive->Disks().front().directory;
}

class Diff {
  public:
    explicit Diff(const DiffArguments& arguments)
        : m_arguments(arguments),
          m_output(arguments.output),
          m_settings(arguments.settings),
          m_a(arguments.output.a),
          m_b(arguments.output.b) {}

    ExitCode Run();

  private:
    void CheckFiles() const;
    ExitCode CompareFiles();
    ExitCode CompareDisks();
    ExitCode CompareLibraries();
    void WritePicture(const compare::FileComparison& comparison) const;
    ExitCode CodeOf(const compare::ItemCounts& counts) const;

    const DiffArguments& m_arguments;
    const DiffOutput& m_output;
    SettingsScope m_settings;
    const KeptRecentLists m_recent_lists;
    const Operand m_a, m_b;
};

ExitCode Diff::Run() {
    if (WasInterrupted()) return InterruptCode();
    if (m_a.Kind() != m_b.Kind()) {
        throw CommandError(m_output.a + " is " + NameOf(m_a.Kind()) + ", " + m_output.b + " is " + NameOf(m_b.Kind()));
    }
    if (m_a.Kind() != OperandKind::kFile && m_arguments.picture)
        throw CommandError("--picture needs two messages, fonts or RGBA pictures");
    if (m_a.Kind() != OperandKind::kLibrary && m_arguments.disk) throw CommandError("--disk needs two libraries");
    CheckFiles();
    PrintDirectoryNotes(m_arguments.options.host.maps, m_arguments.options.fonts);
    const ExitCode code = m_a.Kind() == OperandKind::kFile   ? CompareFiles()
                          : m_a.Kind() == OperandKind::kDisk ? CompareDisks()
                                                             : CompareLibraries();
    m_settings.PrintAnyNote();
    return WasInterrupted() ? InterruptCode() : code;
}

void Diff::CheckFiles() const {
    if (!m_arguments.picture) return;
    CommandFiles files;
    for (const Operand* operand : {&m_a, &m_b}) {
        const run::ImportPaths paths = run::ImportPathsOf(operand->Path(), m_arguments.options.fonts);
        files.ReadByModule(operand->Path(), "a file that is compared");
        files.SearchByModule(system::NativePath(paths.message_directory.c_str()));
        files.SearchByModule(system::NativePath(paths.font_directory.c_str()));
    }
    files.ReadNameLists(m_arguments.options.host.maps);
    files.ReadSettings(m_arguments.settings);
    files.Write(m_arguments.picture, "--picture");
    CheckOutputs(files);
}

ExitCode Diff::CompareFiles() {
    const std::string target = m_arguments.picture ? CheckRegularOutput(*m_arguments.picture) : std::string();
    compare::ComparisonOptions options = m_arguments.options;
    options.mark = m_arguments.picture.has_value();
    compare::FileComparison comparison = compare::CompareFiles(m_a.Path(), m_b.Path(), options);
    comparison.trouble = m_b.Shown(m_a.Shown(comparison.trouble));
    m_output.PrintFiles(comparison);
    if (comparison.result == compare::ComparisonResult::kTrouble) return ExitCode::kWrongArguments;
    if (m_arguments.picture) WritePicture(comparison);
    return m_output.IsDifferent(comparison) ? ExitCode::kNotDone : ExitCode::kDone;
}

void Diff::WritePicture(const compare::FileComparison& comparison) const {
    if (!comparison.marked) {
        PrintNote("no glyph is drawn differently; " + *m_arguments.picture + " was not written");
        return;
    }
    const picture::PngForm form{.channels = picture::PngChannels::kColour,
                                .shape = comparison.kind == compare::ComparedKind::kFont ? picture::PixelShape::kSquare
                                                                                         : picture::PixelShape::kVideo};
    const std::string path = CheckRegularOutput(*m_arguments.picture);
    if (path == "-") {
        WriteBinaryOutput(path, picture::EncodePng(*comparison.marked, form));
    } else {
        picture::WritePng(path, *comparison.marked, form);
    }
    if (!m_output.json) PrintLine("wrote " + *m_arguments.picture);
}

ExitCode Diff::CodeOf(const compare::ItemCounts& counts) const {
    if (counts.trouble != 0) return ExitCode::kWrongArguments;
    const std::size_t different = counts.different + counts.only_in_a + counts.only_in_b;
    return different != 0 || (m_output.bytes && counts.same_but_bytes != 0) ? ExitCode::kNotDone : ExitCode::kDone;
}

ExitCode Diff::CompareDisks() {
    const compare::ItemCounts counts = compare::CompareDisks(
        m_a.Path(), m_b.Path(), m_arguments.options,
        [this](const compare::DiskItem& item) { m_output.PrintItem(item); }, WasInterrupted);
    m_output.PrintSummary("disk", "file", counts);
    return CodeOf(counts);
}

ExitCode Diff::CompareLibraries() {
    library::Library a(m_a.Path(), library::Access::kRead), b(m_b.Path(), library::Access::kRead);
    const compare::ItemCounts counts = compare::CompareLibraries(
        a, b, m_arguments.disk, [this](const compare::LibraryItem& item) { m_output.PrintItem(item); }, WasInterrupted);
    m_output.PrintSummary("library", "recording", counts);
    return CodeOf(counts);
}

/// A failure is no difference, so it has the other exit code.
ExitCode RunDiff(const DiffArguments& arguments) {
    HandleInterrupts();
    try {
        const ExitCode code = Diff(arguments).Run();
        if (std::cout.flush()) return code;
        PrintError("standard output: not everything could be written");
    } catch (const std::bad_alloc&) {
        PrintOutOfMemory();
    } catch (const std::runtime_error& error) {
        PrintError(error.what());
    }
    return ExitCode::kWrongArguments;
}

void CheckOptions(const DiffArguments& arguments) {
    if (IsStandardInput(arguments.output.a) && IsStandardInput(arguments.output.b))
        throw CLI::ValidationError("B", "standard input can be one of the two only");
    ReserveStandardOutputFor({{"--picture", &arguments.picture}}, arguments.output.json);
}

}  // namespace

void AddDiffCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<DiffArguments>();
    CLI::App& command = *app.add_subcommand(
        "diff", "Compares two messages, fonts, disks or libraries by what they contain and by their pictures.");
    compare::ComparisonOptions& options = arguments->options;
    AddArgument(command, "A", arguments->output.a,
                "a message, font or RGBA picture, a disk (a directory with MESSAGES and MACHINE, or an archive of one "
                "disk), or a library; - is standard input");
    AddArgument(command, "B", arguments->output.b, "another one of the same kind");
    AddPath(command, "--picture", arguments->picture, "FILE|-",
            "of two messages, fonts or RGBA pictures: write a picture with the differences marked as PNG");
    command.add_flag("--bytes", arguments->output.bytes,
                     "bytes without effect on an import count as a difference, and are listed");
    AddText(command, "--disk", arguments->disk, "NAME", "of two libraries: only recordings from the disk of this name");
    AddPath(command, "--fonts", options.fonts, "DIR",
            "the directory of the font files for both [MACHINE beside each message's directory]");
    AddMaps(command, options.host.maps);
    AddSettings(command, arguments->settings);
    AddHostOptions(command, options.host, options.rgba);
    AddJson(command, arguments->output.json,
            "print one JSON object, or one for each file or recording that differs and a summary, each in one line");
    AddExample(command, "zeltrans diff DISK/MESSAGES/.0012 OTHER/MESSAGES/.0012 --picture changes.png");
    AddVerbosity(command, true);
    command.callback([arguments, &run] {
        CheckOptions(*arguments);
        run = [arguments] { return RunDiff(*arguments); };
    });
}

}  // namespace zel::cli
