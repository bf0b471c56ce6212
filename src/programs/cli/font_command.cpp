#include "programs/cli/font_command.h"

#include <iostream>
#include <memory>
#include <vector>

#include "host/module_text.h"
#include "host/picture/glyph_sheet.h"
#include "host/picture/png_writer.h"
#include "host/run/font_run.h"
#include "module/contract/zel_font.h"
#include "programs/cli/settings_scope.h"
#include "programs/cli/trace_output.h"
#include "programs/cli/warnings_printer.h"

namespace zel::cli {

namespace {

struct FontArguments {
    run::FontRunRequest request;
    std::optional<std::string> png, trace, settings;
};

/// What stands in the line that tells of the font.
struct Seen {
    std::string name;
    int height = 0;
    int glyphs = 0;
};

Seen Look(const tag_font_memory& slot) {
    Seen seen{host::Utf8FromBytes(slot.font_header->Name()), slot.font_header->font_height};
    for (unsigned code = 0; code < kDirectoryEntries; ++code) seen.glyphs += slot.Entry(code)->HasGlyph() ? 1 : 0;
    return seen;
}

void SayWhatIsAmiss(const picture::GlyphSheet& sheet) {
    if (!sheet.failures.empty()) {
        SayNote("glyphs that couldn't be drawn, red in the sheet: " + std::to_string(sheet.failures.size()) + "; " +
                sheet.failures.front());
    }
    if (sheet.cut != 0) {
        SayNote("glyphs larger than " + std::to_string(picture::kLargestGlyphCell) +
                " pixels, of which the sheet shows a part: " + std::to_string(sheet.cut));
    }
}

ExitCode RunFontCommand(const FontArguments& arguments) {
    const SettingsScope settings(arguments.settings);
    // Whatever can't be written is told before the module is asked for anything.
    const std::string png = arguments.png ? CheckPlainOutput(*arguments.png) : std::string();
    const auto trace = arguments.trace ? std::make_unique<TraceOutput>(*arguments.trace) : nullptr;
    WarningsPrinter warnings;
    std::vector<host::HostObserver*> observers;
    if (trace) observers.push_back(&trace->Observer());
    if (arguments.request.warnings) observers.push_back(&warnings);
    Seen seen;
    picture::GlyphSheet sheet;
    const run::FontRunOutcome outcome = run::RunFont(arguments.request, observers, [&](CZelFont& fonts) {
        seen = Look(fonts.m_Slots[0]);
        if (arguments.png) sheet = picture::DrawGlyphSheet(fonts);
    });
    if (trace) trace->Commit();
    if (!outcome.Done()) throw CommandError(outcome.failure);
    if (arguments.png) picture::WritePng(png, sheet.picture);
    if (outcome.read_from) SayNote("read from " + *outcome.read_from);
    SayWhatIsAmiss(sheet);
    if (arguments.trace != "-") {
        std::cout << arguments.request.file << ": \"" << seen.name << "\", height " << seen.height << ", "
                  << seen.glyphs << (seen.glyphs == 1 ? " glyph" : " glyphs")
                  << (arguments.png ? "; wrote " + *arguments.png : "") << std::endl;
    }
    if (!settings.Note().empty()) SayNote(settings.Note());
    return ExitCode::kDone;
}

void AddOptions(CLI::App& command, FontArguments& arguments) {
    run::FontRunRequest& request = arguments.request;
    command.add_option("FONTFILE", request.file, "the font file, such as DISK/MACHINE/.0012")
        ->required()
        ->type_name("");
    AddPath(command, "--png", arguments.png, "FILE", "write a sheet of all glyphs with their codes");
    AddPath(command, "--trace", arguments.trace, "FILE|-",
            "write all that the host hears, one JSON object a line; - is standard output");
    command.add_flag("--warnings", request.warnings, "leave warnings on, and print each box on standard error");
    AddFontPrompt(command, request.box_answer, request.browse);
    AddMaps(command, request.maps);
    AddSettings(command, arguments.settings);
    AddExample(command, "zeltrans font DISK/MACHINE/.0012 --png glyphs.png");
}

}  // namespace

void AddFontCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<FontArguments>();
    CLI::App& command =
        *app.add_subcommand("font", "Reads one font without a message, and writes a sheet of its glyphs or a trace.");
    AddOptions(command, *arguments);
    command.callback([arguments, &run] { run = [arguments] { return RunFontCommand(*arguments); }; });
}

}  // namespace zel::cli
