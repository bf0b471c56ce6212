#include "programs/cli/font_command.h"

#include <filesystem>
#include <memory>
#include <vector>

#include <CLI/App.hpp>

#include "base/text.h"
#include "base/utf8.h"
#include "host/document/indented_json.h"
#include "host/filejson/file_json.h"
#include "host/module_text.h"
#include "host/native_path.h"
#include "host/picture/glyph_sheet.h"
#include "host/picture/png_writer.h"
#include "host/run/font_run.h"
#include "module/contract/zel_font.h"
#include "platform/system/files.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/font_kits.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/options.h"
#include "programs/cli/output_check.h"
#include "programs/cli/output_file.h"
#include "programs/cli/run_observers.h"
#include "programs/cli/run_options.h"
#include "programs/cli/settings_scope.h"
#include "programs/cli/spooled_input.h"
#include "programs/cli/standard_input.h"

namespace zel::cli {

namespace {

struct FontArguments {
    run::FontRunRequest request;
    std::optional<std::string> png, json, trace, settings;
    FontKitArguments kit;
    bool exact = false;
    bool strict = false;
    /// Of the font file, in texts.
    std::string name;
};

/// What the summary reports about the font.
struct FontSummary {
    std::string name;
    int height = 0;
    int glyphs = 0;
};

FontSummary Summarize(const tag_font_memory& slot) {
    FontSummary summary{base::Utf8FromLatin1(slot.font_header->Name()), slot.font_header->font_height};
    for (unsigned code = 0; code < kDirectoryEntries; ++code) summary.glyphs += slot.Entry(code)->HasGlyph() ? 1 : 0;
    return summary;
}

void PrintSheetNotes(const picture::GlyphSheet& sheet) {
    if (!sheet.failures.empty()) {
        PrintWarning("glyphs that could not be drawn, red in the sheet: " + std::to_string(sheet.failures.size()) +
                     "; " + sheet.failures.front());
    }
    if (sheet.cut != 0) {
        PrintWarning("glyphs larger than " + std::to_string(picture::kLargestGlyphCell) +
                     " pixels, of which the sheet shows only a part: " + std::to_string(sheet.cut));
    }
}

void CheckFiles(const FontArguments& arguments) {
    CommandFiles files;
    files.ReadByModule(arguments.request.file, "the font file");
    files.SearchByModule(std::filesystem::path(arguments.request.file).parent_path().string());
    if (arguments.request.browse) files.ReadByModule(*arguments.request.browse, "the file of --browse");
    files.ReadNameLists(arguments.request.maps);
    files.ReadSettings(arguments.settings);
    files.Write(arguments.png, "--png");
    files.Write(arguments.json, "--json");
    files.Write(arguments.trace, "--trace");
    FontKitWriter::AddFiles(arguments.kit, files);
    CheckOutputs(files);
}

void WriteDocument(const FontArguments& arguments, const run::FontRunOutcome& outcome, OutputFile& output) {
    const std::string file = outcome.read_from.value_or(
        system::NativePath(system::ModulePath(host::AbsolutePath(arguments.request.file)).c_str()));
    const bool is_standard_input = arguments.name == kStandardInput && !outcome.read_from;
    try {
        const filejson::FileKey key = filejson::FileJsonOf(file, arguments.exact);
        if (key.left_out != 0) PrintWarning(*arguments.json + " " + filejson::LeftOutNote(key.left_out));
        output.Write(document::IndentedJson(filejson::FontDocument(is_standard_input ? "-" : file, key.json)) + "\n");
    } catch (const CommandError&) {
        throw;
    } catch (const std::runtime_error& error) {
        throw CommandError(arguments.name + ": can't be read again for the document: " + error.what());
    }
    output.Commit();
}

std::string Written(const FontArguments& arguments, const std::optional<fontkit::FontKit>& kit) {
    std::string text;
    if (arguments.png) text += ", " + *arguments.png;
    if (arguments.json) text += ", " + *arguments.json;
    if (kit) text += ", " + FontKitWriter::Written(*kit, *arguments.kit.directory);
    return text.empty() ? text : "; wrote " + text.substr(2);
}

std::string SummaryText(const FontSummary& summary) {
    return "\"" + summary.name + "\", height " + std::to_string(summary.height) + ", " +
           base::Counted(static_cast<std::uint64_t>(summary.glyphs), "glyph");
}

/// A failure counts before what --strict takes as one.
ExitCode CodeOf(const std::optional<FontKitWriter>& kits, bool strict) {
    const ExitCode code = StrictCode(strict);
    return kits && kits->Code() != ExitCode::kDone ? kits->Code() : code;
}

ExitCode RunFontCommand(const FontArguments& arguments) {
    CheckFiles(arguments);
    const SettingsScope settings(arguments.settings);
    // Opened first, so that an output that cannot be written is reported before the module runs.
    const std::string png = arguments.png ? CheckRegularOutput(*arguments.png) : std::string();
    std::unique_ptr<OutputFile> json;
    if (arguments.json) json = std::make_unique<OutputFile>(*arguments.json);
    RunObservers observers(arguments.trace);
    PrintDirectoryNotes(arguments.request.maps, std::nullopt);
    if (arguments.request.warnings) observers.PrintWarnings();
    FontSummary summary;
    picture::GlyphSheet sheet;
    std::optional<FontKitWriter> kits;
    std::optional<fontkit::FontKit> kit;
    if (arguments.kit.directory) kits.emplace(arguments.kit);
    const run::FontRunOutcome outcome = run::RunFont(arguments.request, observers.All(), [&](CZelFont& fonts) {
        summary = Summarize(fonts.m_Slots[0]);
        if (arguments.png) sheet = picture::DrawGlyphSheet(fonts);
        if (kits) kit.emplace(kits->Make(fonts, arguments.name));
    });
    observers.CommitTrace();
    if (!outcome.Done()) throw CommandError(outcome.failure);
    if (png == "-") {
        WriteBinaryOutput(png, picture::EncodePng(sheet.picture));
    } else if (arguments.png) {
        picture::WritePng(png, sheet.picture);
    }
    if (json) WriteDocument(arguments, outcome, *json);
    if (kit) kits->Write(*kit, *arguments.kit.directory, arguments.name);
    PrintDetail("font " + outcome.read_from.value_or(arguments.name));
    if (outcome.read_from) PrintWarning("read from " + *outcome.read_from);
    PrintSheetNotes(sheet);
    PrintLine(arguments.name + ": " + SummaryText(summary) + Written(arguments, kit));
    settings.PrintAnyNote();
    return CodeOf(kits, arguments.strict);
}

/// Writes the kit of one font of a disk.
void WriteKit(const FontArguments& arguments, const std::string& file, FontKitWriter& kits) {
    run::FontRunRequest request = arguments.request;
    request.file = file;
    FontSummary summary;
    std::optional<fontkit::FontKit> kit;
    const run::FontRunOutcome outcome = run::RunFont(request, {}, [&](CZelFont& fonts) {
        summary = Summarize(fonts.m_Slots[0]);
        kit.emplace(kits.Make(fonts, file));
    });
    if (!outcome.Done()) throw CommandError(outcome.failure);
    if (outcome.read_from) PrintWarning(file + ": read from " + *outcome.read_from);
    const std::string directory = (std::filesystem::path(*arguments.kit.directory) / FontKitStem(file)).string();
    kits.Write(*kit, directory, file);
    PrintLine(file + ": " + SummaryText(summary) + "; wrote " + FontKitWriter::Written(*kit, directory));
}

/// A font that fails leaves the others.
ExitCode RunFontDisk(const FontArguments& arguments) {
    const std::vector<std::string> fonts = FontFilesOf(arguments.request.file);
    CommandFiles files;
    for (const std::string& font : fonts) files.ReadByModule(font, "a font file");
    files.SearchByModule(std::filesystem::path(fonts.front()).parent_path().string());
    files.ReadNameLists(arguments.request.maps);
    files.ReadSettings(arguments.settings);
    FontKitWriter::AddFiles(arguments.kit, files);
    CheckOutputs(files);
    const SettingsScope settings(arguments.settings);
    PrintDirectoryNotes(arguments.request.maps, std::nullopt);
    std::optional<FontKitWriter> kits(arguments.kit);
    HandleInterrupts();
    std::size_t failed = 0;
    for (const std::string& font : fonts) {
        if (WasInterrupted()) return InterruptCode();
        try {
            WriteKit(arguments, font, *kits);
        } catch (const CommandError& error) {
            PrintError(error.what());
            ++failed;
        }
    }
    PrintLine(base::Counted(fonts.size() - failed, "font") + " of " + std::to_string(fonts.size()) + " written to " +
              *arguments.kit.directory);
    settings.PrintAnyNote();
    return failed != 0 ? ExitCode::kNotDone : CodeOf(kits, arguments.strict);
}

bool IsDirectory(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_directory(path, error);
}

ExitCode RunNamedFont(FontArguments arguments) {
    arguments.name = arguments.request.file;
    if (IsDirectory(arguments.name)) return RunFontDisk(arguments);
    if (!IsStandardInput(arguments.name)) return RunFontCommand(arguments);
    const SpooledInput input("MACHINE");
    arguments.request.file = input.Path();
    arguments.name = kStandardInput;
    try {
        return RunFontCommand(arguments);
    } catch (const CommandError& error) {
        throw CommandError(input.Shown(error.what()));
    }
}

/// A disk has kits and nothing else.
void CheckDiskOptions(const CLI::App& command, const FontArguments& arguments) {
    if (!IsDirectory(arguments.request.file)) return;
    if (!arguments.kit.directory) throw CLI::RequiresError("a directory of fonts", "--kit");
    for (const char* option : {"--png", "--json", "--trace", "--warnings"}) {
        if (command.count(option) != 0) throw CLI::ExcludesError(option, "a directory of fonts");
    }
}

void CheckOptions(const CLI::App& command, const FontArguments& arguments) {
    CheckDiskOptions(command, arguments);
    CheckFontKitOptions(command, arguments.kit);
    RequireFontPrompt(command, arguments.request.warnings, arguments.request.box_answer);
    Require(command, "--exact", arguments.json.has_value(), "--json");
    ReserveStandardOutputFor({{"--png", &arguments.png}, {"--json", &arguments.json}, {"--trace", &arguments.trace}});
}

void AddOptions(CLI::App& command, FontArguments& arguments) {
    run::FontRunRequest& request = arguments.request;
    AddArgument(
        command, "FONTFILE", request.file,
        "the font file, such as DISK/MACHINE/.0012; - is standard input; for --kit also a disk or a directory of "
        "fonts");
    AddPath(command, "--png", arguments.png, "FILE|-", "write a sheet of all glyphs with their codes as PNG");
    AddPath(command, "--json", arguments.json, "FILE|-",
            "write the font as a JSON document, from which \"zeltrans write\" makes the file again");
    AddExact(command, arguments.exact, "--json");
    AddTrace(command, arguments.trace);
    AddFontKit(command, arguments.kit);
    command.add_flag("--warnings", request.warnings,
                     "turn the module's warnings on and print each message box on standard error");
    AddFontPrompt(command, request.box_answer, request.browse);
    AddMaps(command, request.maps);
    AddSettings(command, arguments.settings);
    AddStrict(command, arguments.strict);
    AddVerbosity(command, true);
    AddExample(command, "zeltrans font DISK/MACHINE/.0012 --png glyphs.png\n  zeltrans font DISK --kit fonts --otf");
}

}  // namespace

void AddFontCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<FontArguments>();
    CLI::App& command = *app.add_subcommand(
        "font",
        "Reads one font without a message and writes a sheet of its glyphs, a document, a trace, or a kit for other "
        "programs.");
    AddOptions(command, *arguments);
    command.callback([arguments, &command, &run] {
        CheckOptions(command, *arguments);
        run = [arguments] { return RunNamedFont(*arguments); };
    });
}

}  // namespace zel::cli
