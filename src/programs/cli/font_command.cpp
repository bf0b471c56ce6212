#include "programs/cli/font_command.h"

#include <filesystem>
#include <memory>
#include <vector>

#include <CLI/App.hpp>

#include "base/text.h"
#include "base/utf8.h"
#include "host/module_text.h"
#include "host/picture/glyph_sheet.h"
#include "host/picture/png_writer.h"
#include "host/run/font_run.h"
#include "module/contract/zel_font.h"
#include "programs/cli/diagnostics.h"
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
    std::optional<std::string> png, trace, settings;
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
    files.Write(arguments.trace, "--trace");
    CheckOutputs(files);
}

ExitCode RunFontCommand(const FontArguments& arguments) {
    CheckFiles(arguments);
    const SettingsScope settings(arguments.settings);
    // Opened first, so that an output that cannot be written is reported before the module runs.
    const std::string png = arguments.png ? CheckRegularOutput(*arguments.png) : std::string();
    RunObservers observers(arguments.trace);
    PrintDirectoryNotes(arguments.request.maps, std::nullopt);
    if (arguments.request.warnings) observers.PrintWarnings();
    FontSummary summary;
    picture::GlyphSheet sheet;
    const run::FontRunOutcome outcome = run::RunFont(arguments.request, observers.All(), [&](CZelFont& fonts) {
        summary = Summarize(fonts.m_Slots[0]);
        if (arguments.png) sheet = picture::DrawGlyphSheet(fonts);
    });
    observers.CommitTrace();
    if (!outcome.Done()) throw CommandError(outcome.failure);
    if (png == "-") {
        WriteBinaryOutput(png, picture::EncodePng(sheet.picture));
    } else if (arguments.png) {
        picture::WritePng(png, sheet.picture);
    }
    PrintDetail("font " + outcome.read_from.value_or(arguments.name));
    if (outcome.read_from) PrintWarning("read from " + *outcome.read_from);
    PrintSheetNotes(sheet);
    PrintLine(arguments.name + ": \"" + summary.name + "\", height " + std::to_string(summary.height) + ", " +
              base::Counted(static_cast<std::uint64_t>(summary.glyphs), "glyph") +
              (arguments.png ? "; wrote " + *arguments.png : ""));
    settings.PrintAnyNote();
    return StrictCode(arguments.strict);
}

ExitCode RunNamedFont(FontArguments arguments) {
    arguments.name = arguments.request.file;
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

void CheckOptions(const CLI::App& command, const FontArguments& arguments) {
    RequireFontPrompt(command, arguments.request.warnings, arguments.request.box_answer);
    ReserveStandardOutputFor({{"--png", &arguments.png}, {"--trace", &arguments.trace}});
}

void AddOptions(CLI::App& command, FontArguments& arguments) {
    run::FontRunRequest& request = arguments.request;
    AddArgument(command, "FONTFILE", request.file, "the font file, such as DISK/MACHINE/.0012; - is standard input");
    AddPath(command, "--png", arguments.png, "FILE|-", "write a sheet of all glyphs with their codes as PNG");
    AddTrace(command, arguments.trace);
    command.add_flag("--warnings", request.warnings,
                     "turn the module's warnings on and print each message box on standard error");
    AddFontPrompt(command, request.box_answer, request.browse);
    AddMaps(command, request.maps);
    AddSettings(command, arguments.settings);
    AddStrict(command, arguments.strict);
    AddVerbosity(command, true);
    AddExample(command, "zeltrans font DISK/MACHINE/.0012 --png glyphs.png");
}

}  // namespace

void AddFontCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<FontArguments>();
    CLI::App& command =
        *app.add_subcommand("font", "Reads one font without a message and writes a sheet of its glyphs or a trace.");
    AddOptions(command, *arguments);
    command.callback([arguments, &command, &run] {
        CheckOptions(command, *arguments);
        run = [arguments] { return RunNamedFont(*arguments); };
    });
}

}  // namespace zel::cli
