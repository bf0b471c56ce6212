#include "programs/cli/import_command.h"

#include <iostream>
#include <memory>
#include <vector>

#include "host/document/indented_json.h"
#include "host/document/message_document.h"
#include "host/document/message_warnings.h"
#include "host/picture/field_overlay.h"
#include "host/picture/picture_composer.h"
#include "host/picture/png_writer.h"
#include "host/run/import_run.h"
#include "programs/cli/settings_scope.h"
#include "programs/cli/trace_output.h"
#include "programs/cli/warnings_printer.h"

namespace zel::cli {

namespace {

struct ImportArguments {
    run::ImportRequest request;
    std::optional<std::string> png, json, trace, settings;
    host::TracePixels pixels = host::TracePixels::kNo;
    bool warnings = false;
    bool fields = false;

    bool TraceToStandardOutput() const { return trace == "-"; }
};

std::string CountOf(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

class Import {
  public:
    explicit Import(const ImportArguments& arguments);

    ExitCode Run();

  private:
    void WritePicture(const run::ImportOutcome& outcome);
    void WriteDocument(const document::MessageRecord& message);
    void SayWhatArrived(const run::ImportOutcome& outcome) const;

    const ImportArguments& m_arguments;
    SettingsScope m_settings;
    std::unique_ptr<TraceOutput> m_trace;
    std::unique_ptr<OutputFile> m_json;
    std::string m_png;  // what --png leads to
    picture::PictureComposer m_picture;
    std::string m_written;
};

// Whatever can't be written is told before the module is asked for anything.
Import::Import(const ImportArguments& arguments) : m_arguments(arguments), m_settings(arguments.settings) {
    if (arguments.png) m_png = CheckPlainOutput(*arguments.png);
    if (arguments.json) m_json = std::make_unique<OutputFile>(*arguments.json);
    if (arguments.trace) m_trace = std::make_unique<TraceOutput>(*arguments.trace, arguments.pixels);
}

ExitCode Import::Run() {
    WarningsPrinter warnings;
    std::vector<host::HostObserver*> observers;
    if (m_trace) observers.push_back(&m_trace->Observer());
    if (m_arguments.png) observers.push_back(&m_picture);
    if (m_arguments.warnings) observers.push_back(&warnings);
    const run::ImportOutcome outcome = run::RunImport(m_arguments.request, observers);
    if (m_trace) m_trace->Commit();
    if (!outcome.Done()) throw CommandError(outcome.failure);
    if (m_arguments.png) WritePicture(outcome);
    if (m_json && outcome.message) WriteDocument(*outcome.message);
    SayWhatArrived(outcome);
    if (!m_settings.Note().empty()) SayNote(m_settings.Note());
    return ExitCode::kDone;
}

void Import::WritePicture(const run::ImportOutcome& outcome) {
    std::optional<picture::Picture> picture = m_picture.TakePicture();
    if (!picture) {
        const std::string& trouble = m_picture.RgbaError();
        SayNote(m_arguments.request.message +
                (!outcome.message   ? " was not inserted; "
                 : !trouble.empty() ? ": " + trouble + "; "
                                    : " has no picture; ") +
                *m_arguments.png + " was not written");
        return;
    }
    if (m_arguments.fields) picture::DrawTabFields(*picture, *outcome.message);
    try {
        picture::WritePng(m_png, *picture);
    } catch (const std::runtime_error& error) {
        throw CommandError(error.what());
    }
    if (!VideoStandardOf(picture->height)) {
        SayNote(*m_arguments.png + ": a picture of " + std::to_string(picture->height) +
                " lines belongs to no video standard; its pixel aspect ratio is that of " +
                NameOf(VideoStandard::kNtsc));
    }
    m_written += ", " + *m_arguments.png;
}

void Import::WriteDocument(const document::MessageRecord& message) {
    m_json->Write(document::IndentedJson(document::MessageDocument(message, m_arguments.request.message)) + "\n");
    m_json->Commit();
    m_written += ", " + *m_arguments.json;
}

void Import::SayWhatArrived(const run::ImportOutcome& outcome) const {
    std::string line = m_arguments.request.message + ": ";
    if (!outcome.message) {
        line += "an RGBA picture, not inserted";
    } else if (outcome.message->rgba) {
        line += std::string("an RGBA picture, inserted as ") + (outcome.message->object ? "an object" : "a background");
    } else {
        std::size_t characters = 0;
        for (const document::CharacterRecord& character : outcome.message->characters)
            characters += character.info.slot >= 0 ? 1 : 0;
        line += CountOf(outcome.message->rows.size(), "row") + ", " + CountOf(characters, "character");
        if (!outcome.message->tabs.empty()) line += ", " + CountOf(outcome.message->tabs.size(), "tab field");
        for (const std::string& warning : document::WarningsOf(*outcome.message)) SayNote(warning);
    }
    if (!m_written.empty()) line += "; wrote " + m_written.substr(2);
    if (!m_arguments.TraceToStandardOutput()) std::cout << line << std::endl;
}

void AddInputs(CLI::App& command, ImportArguments& arguments) {
    run::ImportRequest& request = arguments.request;
    command.add_option("MESSAGE", request.message, "the message file, such as DISK/MESSAGES/.0012")
        ->required()
        ->type_name("");
    AddPath(command, "--fonts", request.fonts, "DIR", "the font directory [MACHINE beside the message's directory]");
    AddMaps(command, request.host.maps);
    AddSettings(command, arguments.settings);
}

void AddOutputs(CLI::App& command, ImportArguments& arguments) {
    AddPath(command, "--png", arguments.png, "FILE", "write the message's picture, 720 x 486 or 720 x 576 pixels");
    command.add_flag("--fields", arguments.fields, "with --png: frames and names of the tab fields over the picture");
    AddPath(command, "--json", arguments.json, "FILE", "write the message as a JSON document");
    AddPath(command, "--trace", arguments.trace, "FILE|-",
            "write all that the host hears, one JSON object a line; - is standard output");
    command.add_flag_callback(
        "--pixels", [&arguments] { arguments.pixels = host::TracePixels::kYes; },
        "with --trace: size and checksum of each character's pixels");
}

void AddChoices(CLI::App& command, ImportArguments& arguments) {
    run::ImportRequest& request = arguments.request;
    command.add_flag("--warnings", arguments.warnings,
                     "import by the main dialog, and print each box on standard error");
    AddFontPrompt(command, request.box_answer, request.browse);
    AddHostOptions(command, request.host, request.rgba);
}

}  // namespace

void AddImportCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<ImportArguments>();
    CLI::App& command = *app.add_subcommand(
        "import", "Imports one message, and writes what arrives as a picture, a document or a trace.");
    AddInputs(command, *arguments);
    AddOutputs(command, *arguments);
    AddChoices(command, *arguments);
    AddExample(command, "zeltrans import DISK/MESSAGES/.0012 --maps DISK --png 0012.png");
    command.callback([arguments, &run] {
        arguments->request.mode = arguments->warnings ? run::ImportMode::kDialog : run::ImportMode::kSilent;
        run = [arguments] { return Import(*arguments).Run(); };
    });
}

}  // namespace zel::cli
