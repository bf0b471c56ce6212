#include "programs/cli/import_command.h"

#include <memory>
#include <vector>

#include <CLI/App.hpp>

#include "base/text.h"
#include "host/document/indented_json.h"
#include "host/document/message_document.h"
#include "host/document/message_warnings.h"
#include "host/filejson/file_json.h"
#include "host/picture/field_overlay.h"
#include "host/picture/picture_composer.h"
#include "host/picture/png_writer.h"
#include "host/run/import_paths.h"
#include "host/run/import_run.h"
#include "platform/system/files.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/options.h"
#include "programs/cli/output_check.h"
#include "programs/cli/run_observers.h"
#include "programs/cli/run_options.h"
#include "programs/cli/settings_scope.h"
#include "programs/cli/spooled_input.h"
#include "programs/cli/standard_input.h"

namespace zel::cli {

namespace {

struct ImportArguments {
    run::ImportRequest request;
    std::optional<std::string> png, json, trace, settings;
    host::TracePixels pixels = host::TracePixels::kNo;
    bool warnings = false;
    bool fields = false;
    bool strict = false;
    bool exact = false;
    /// Of the message, in texts.
    std::string name;
    picture::PngEffort effort = picture::PngEffort::kFast;
};

class Import {
  public:
    explicit Import(const ImportArguments& arguments);

    ExitCode Run();

  private:
    void WritePicture(const run::ImportOutcome& outcome);
    std::string WithFileKey(std::string document, const document::MessageRecord& message) const;
    void WriteDocument(const document::MessageRecord& message);
    void PrintSummary(const run::ImportOutcome& outcome) const;

    const ImportArguments& m_arguments;
    SettingsScope m_settings;
    RunObservers m_observers;
    std::unique_ptr<OutputFile> m_json;
    std::string m_png;  // the target of --png
    picture::PictureComposer m_picture;
    std::string m_written;
};

// @throws CommandError if an output would destroy an input.
const ImportArguments& Checked(const ImportArguments& arguments) {
    const run::ImportPaths paths = run::ImportPathsOf(arguments.request.message, arguments.request.fonts);
    CommandFiles files;
    files.ReadByModule(arguments.request.message, "the message");
    files.SearchByModule(system::NativePath(paths.message_directory.c_str()));
    files.SearchByModule(system::NativePath(paths.font_directory.c_str()));
    if (arguments.request.browse) files.ReadByModule(*arguments.request.browse, "the file of --browse");
    files.ReadNameLists(arguments.request.host.maps);
    files.ReadSettings(arguments.settings);
    files.Write(arguments.png, "--png");
    files.Write(arguments.json, "--json");
    files.Write(arguments.trace, "--trace");
    CheckOutputs(files);
    return arguments;
}

// Opens the outputs, so that one that cannot be written is reported before the module runs.
Import::Import(const ImportArguments& arguments)
    : m_arguments(Checked(arguments)), m_settings(arguments.settings), m_observers(arguments.trace, arguments.pixels) {
    if (arguments.png) m_png = CheckRegularOutput(*arguments.png);
    if (arguments.json) m_json = std::make_unique<OutputFile>(*arguments.json);
}

ExitCode Import::Run() {
    PrintDirectoryNotes(m_arguments.request.host.maps, m_arguments.request.fonts);
    if (m_arguments.png) m_observers.Add(m_picture);
    if (m_arguments.warnings) m_observers.PrintWarnings();
    const run::ImportOutcome outcome = run::RunImport(m_arguments.request, m_observers.All());
    m_observers.CommitTrace();
    if (!outcome.Done()) throw CommandError(outcome.failure);
    PrintDetail("message " + m_arguments.name);
    if (m_arguments.png) WritePicture(outcome);
    if (m_json && outcome.message) WriteDocument(*outcome.message);
    PrintSummary(outcome);
    m_settings.PrintAnyNote();
    return StrictCode(m_arguments.strict);
}

void Import::WritePicture(const run::ImportOutcome& outcome) {
    std::optional<picture::Picture> picture = m_picture.TakePicture();
    if (!picture) {
        const std::string& error = m_picture.RgbaError();
        PrintWarning(m_arguments.name +
                     (!outcome.message ? " was not inserted; "
                      : !error.empty() ? ": " + error + "; "
                                       : " has no picture; ") +
                     *m_arguments.png + " was not written");
        return;
    }
    if (m_arguments.fields) picture::DrawTabFields(*picture, *outcome.message);
    try {
        const picture::PngForm form{.effort = m_arguments.effort};
        if (m_png == "-") {
            WriteBinaryOutput(m_png, picture::EncodePng(*picture, form));
        } else {
            picture::WritePng(m_png, *picture, form);
        }
    } catch (const std::runtime_error& error) {
        throw CommandError(error.what());
    }
    if (!VideoStandardOf(picture->height)) {
        PrintNote(*m_arguments.png + ": a picture of " + std::to_string(picture->height) +
                  " lines belongs to no video standard; its pixel aspect ratio is that of " +
                  NameOf(VideoStandard::kNtsc));
    }
    m_written += ", " + *m_arguments.png;
}

// The module gives no bytes of the file, so it is read again for the document.
std::string Import::WithFileKey(std::string document, const document::MessageRecord& message) const {
    if (message.rgba) return document;
    try {
        const filejson::FileKey file =
            filejson::FileJsonOf(system::NativePath(message.file.c_str()), m_arguments.exact);
        if (file.left_out != 0) PrintWarning(*m_arguments.json + " " + filejson::LeftOutNote(file.left_out));
        return filejson::WithFile(std::move(document), file.json);
    } catch (const std::runtime_error& error) {
        PrintWarning(m_arguments.name +
                     ": can't be read again, so that the document has no key \"file\": " + error.what());
        return document;
    }
}

void Import::WriteDocument(const document::MessageRecord& message) {
    std::string text;
    if (m_arguments.name == kStandardInput) {
        // Not the name of the spooled file, which is gone afterwards.
        document::MessageRecord unnamed = message;
        unnamed.file = "-";
        text = document::MessageDocument(unnamed);
    } else {
        text = document::MessageDocument(message);
    }
    text = WithFileKey(std::move(text), message);
    m_json->Write(document::IndentedJson(text) + "\n");
    m_json->Commit();
    m_written += ", " + *m_arguments.json;
}

void Import::PrintSummary(const run::ImportOutcome& outcome) const {
    std::string line = m_arguments.name + ": ";
    if (!outcome.message) {
        line += "an RGBA picture, not inserted";
    } else if (outcome.message->rgba) {
        line += std::string("an RGBA picture, inserted as ") + (outcome.message->object ? "an object" : "a background");
    } else {
        line += base::Counted(outcome.message->rows.size(), "row") + ", " +
                base::Counted(outcome.message->characters.size(), "character");
        if (!outcome.message->tabs.empty()) line += ", " + base::Counted(outcome.message->tabs.size(), "tab field");
        for (const std::string& warning : document::WarningsOf(*outcome.message)) PrintWarning(warning);
    }
    if (!m_written.empty()) line += "; wrote " + m_written.substr(2);
    PrintLine(line);
    if (!outcome.message) return;
    for (const auto& font : outcome.message->fonts) {
        if (font) PrintDetail("font " + system::NativePath(font->file_name.c_str()));
    }
}

void AddInputs(CLI::App& command, ImportArguments& arguments) {
    run::ImportRequest& request = arguments.request;
    AddArgument(command, "MESSAGE", request.message,
                "the message file, such as DISK/MESSAGES/.0012; - is standard input, whose fonts are those of --fonts");
    AddPath(command, "--fonts", request.fonts, "DIR",
            "the directory of the font files [MACHINE beside the message's directory]");
    AddMaps(command, request.host.maps);
    AddSettings(command, arguments.settings);
}

void AddOutputs(CLI::App& command, ImportArguments& arguments) {
    AddPath(command, "--png", arguments.png, "FILE|-",
            "write the picture as PNG: 720 x 486 pixels for NTSC, 720 x 576 for PAL; an RGBA picture in its own size");
    AddSmall(command, arguments.effort);
    command.add_flag("--fields", arguments.fields, "with --png: draw the frames and names of the tab fields");
    AddPath(command, "--json", arguments.json, "FILE|-",
            "write the message as a JSON document, from which \"zeltrans write\" makes the file again");
    AddExact(command, arguments.exact, "--json");
    AddTrace(command, arguments.trace);
    AddTracePixels(command, arguments.pixels);
}

void AddChoices(CLI::App& command, ImportArguments& arguments) {
    run::ImportRequest& request = arguments.request;
    command.add_flag("--warnings", arguments.warnings,
                     "import through the module's main dialog and print each message box on standard error");
    AddFontPrompt(command, request.box_answer, request.browse);
    AddHostOptions(command, request.host, request.rgba);
}

ExitCode RunImportCommand(ImportArguments arguments) {
    arguments.name = arguments.request.message;
    if (!IsStandardInput(arguments.name)) return Import(arguments).Run();
    const SpooledInput input("MESSAGES");
    arguments.request.message = input.Path();
    arguments.name = kStandardInput;
    try {
        return Import(arguments).Run();
    } catch (const CommandError& error) {
        throw CommandError(input.Shown(error.what()));
    }
}

// Options that go together, and that have an effect.
void CheckOptions(const CLI::App& command, const ImportArguments& arguments) {
    Require(command, "--small", arguments.png.has_value(), "--png");
    Require(command, "--exact", arguments.json.has_value(), "--json");
    Require(command, "--fields", arguments.png.has_value(), "--png");
    Require(command, "--pixels", arguments.trace.has_value(), "--trace");
    RequireFontPrompt(command, arguments.warnings, arguments.request.box_answer);
    ReserveStandardOutputFor({{"--png", &arguments.png}, {"--json", &arguments.json}, {"--trace", &arguments.trace}});
}

}  // namespace

void AddImportCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<ImportArguments>();
    CLI::App& command =
        *app.add_subcommand("import", "Imports one message and writes it as a picture, a document or a trace.");
    AddInputs(command, *arguments);
    AddOutputs(command, *arguments);
    AddChoices(command, *arguments);
    AddExample(command, "zeltrans import DISK/MESSAGES/.0012 --maps DISK --png 0012.png");
    AddStrict(command, arguments->strict);
    AddVerbosity(command, true);
    command.callback([arguments, &command, &run] {
        CheckOptions(command, *arguments);
        arguments->request.mode = arguments->warnings ? run::ImportMode::kDialog : run::ImportMode::kSilent;
        run = [arguments] { return RunImportCommand(*arguments); };
    });
}

}  // namespace zel::cli
