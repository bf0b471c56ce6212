#include "programs/cli/fill_command.h"

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <CLI/App.hpp>

#include "host/export/export_formats.h"
#include "host/native_path.h"
#include "host/run/import_paths.h"
#include "platform/system/files.h"
#include "programs/cli/choice_option.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/fill_arguments.h"
#include "programs/cli/fill_data.h"
#include "programs/cli/fill_listing.h"
#include "programs/cli/fill_outputs.h"
#include "programs/cli/fill_records.h"
#include "programs/cli/fill_texts.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/options.h"
#include "programs/cli/output_check.h"
#include "programs/cli/output_file.h"
#include "programs/cli/picture_options.h"
#include "programs/cli/settings_scope.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

bool IsDirectory(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

std::string WithoutDot(const std::string& name) {
    return name.starts_with('.') ? name.substr(1) : name;
}

/// @throws CommandError if an output would destroy an input.
const FillArguments& Checked(const FillArguments& arguments) {
    CommandFiles files;
    const std::string& message = arguments.request.message;
    if (IsDirectory(message)) {
        for (const std::string& directory : FillTexts::DirectoriesOf(arguments)) files.SearchByModule(directory);
    } else {
        const run::ImportPaths paths = run::ImportPathsOf(message, arguments.request.fonts);
        files.Read(MessageFileOf(arguments.request), "the message");
        files.SearchByModule(system::NativePath(paths.message_directory.c_str()));
        files.SearchByModule(system::NativePath(paths.font_directory.c_str()));
    }
    files.ReadNameLists(arguments.request.host.maps);
    files.ReadSettings(arguments.settings);
    if (arguments.data && *arguments.data != "-") files.Read(*arguments.data, "the table");
    if (arguments.library) files.WriteLibrary(*arguments.library);
    if (arguments.directory)
        files.WriteInto(*arguments.directory, [&](std::string_view name) { return IsFilledFile(arguments, name); });
    if (arguments.write && (arguments.data || IsDirectory(*arguments.write))) {
        files.WriteInto(*arguments.write, [](std::string_view) { return true; });
    } else {
        files.Write(arguments.write, "--write");
    }
    CheckOutputs(files);
    return arguments;
}

class FillCommand {
  public:
    explicit FillCommand(FillArguments arguments)
        : m_arguments(std::move(arguments)),
          m_settings(Checked(m_arguments).settings),
          m_report(m_arguments.data.value_or(""), m_arguments.json) {}

    ExitCode Run();

  private:
    void FillOnce(const OpenedForm& form);
    void FillFromData();
    bool Take(fill::DataRecord record);
    void Begin(const fill::DataRecord& record);
    void Finish(FillOutputs& outputs);

    FillArguments m_arguments;
    SettingsScope m_settings;
    FillReport m_report;
    std::optional<OpenedForm> m_form;
    std::unique_ptr<FillOutputs> m_outputs;
    /// One of them, by the columns of the table.
    std::unique_ptr<FillRecords> m_records;
    std::unique_ptr<FillTexts> m_texts;
};

ExitCode FillCommand::Run() {
    PrintDirectoryNotes(m_arguments.request.host.maps, m_arguments.request.fonts);
    if (!IsDirectory(m_arguments.request.message)) {
        m_form.emplace(OpenForm(m_arguments.request));
        for (const std::string& warning : m_form->warnings) PrintWarning(warning);
    }
    if (m_arguments.list) {
        if (!m_form) throw CommandError(m_arguments.request.message + ": is a directory; --list needs a message");
        ListFields(m_form->form, m_arguments.json);
        return StrictCode(m_arguments.strict);
    }
    HandleInterrupts();
    if (m_arguments.data) {
        FillFromData();
    } else {
        FillOnce(*m_form);
    }
    m_settings.PrintAnyNote();
    if (WasInterrupted()) return InterruptCode();
    return m_report.HasFaults() ? ExitCode::kNotDone : StrictCode(m_arguments.strict);
}

// The outputs have the form's name. The message file is the one that --write names, or has the form's name in that
// directory.
void FillCommand::FillOnce(const OpenedForm& form) {
    const std::string name = fs::path(form.file).filename().string();
    std::string file_name = name;
    FillArguments arguments = m_arguments;
    if (arguments.write && *arguments.write == "-") arguments.write.reset();
    if (arguments.write && !IsDirectory(*arguments.write)) {
        const fs::path path(*arguments.write);
        file_name = path.filename().string();
        arguments.write = path.parent_path().string();
    }
    FillOutputs outputs(arguments, {host::AbsolutePath(form.file), form.form.font_directory, form.warnings},
                        [this](const FillResult& result) { m_report.Add(result); });
    const std::optional<files::Bytes> bytes =
        FillRecords(arguments, form, outputs, m_report).FillOnce(WithoutDot(name), file_name);
    Finish(outputs);
    if (bytes && m_arguments.write == "-" && !m_report.HasFaults())
        WriteBinaryOutput("-", {reinterpret_cast<const char*>(bytes->data()), bytes->size()});
    m_report.PrintSummary("message");
}

void FillCommand::Begin(const fill::DataRecord& record) {
    const bool has_texts = FillTexts::IsTable(*record.columns);
    if (!m_form && !has_texts) {
        throw CommandError(m_arguments.request.message +
                           ": is a directory, which a table of \"library texts\" can change; name a message for "
                           "another table");
    }
    const std::string table = *m_arguments.data == "-" ? std::string() : host::AbsolutePath(*m_arguments.data);
    FillSource source{table.empty() ? host::AbsolutePath(m_arguments.request.message) : table, {}, {}};
    if (m_form) {
        source.font_directory = m_form->form.font_directory;
        source.known_warnings = m_form->warnings;
    } else {
        source.font_directory = FillTexts::DirectoriesOf(m_arguments).back();
    }
    m_outputs = std::make_unique<FillOutputs>(m_arguments, std::move(source),
                                              [this](const FillResult& result) { m_report.Add(result); });
    if (has_texts) {
        m_texts = std::make_unique<FillTexts>(m_arguments, *m_outputs, m_report);
    } else {
        m_records = std::make_unique<FillRecords>(m_arguments, *m_form, *m_outputs, m_report);
    }
}

bool FillCommand::Take(fill::DataRecord record) {
    if (!m_outputs) Begin(record);
    if (m_texts) {
        m_texts->Take(record);
    } else {
        m_records->Take(record);
    }
    return !WasInterrupted();
}

void FillCommand::FillFromData() {
    try {
        ReadDataFile(*m_arguments.data, [this](fill::DataRecord record) { return Take(std::move(record)); });
    } catch (const fill::DataError& error) {
        m_report.AddFault(error.what());
    }
    if (m_texts && !WasInterrupted()) m_texts->Finish();
    if (m_outputs) Finish(*m_outputs);
    if (m_report.Count() == 0 && !m_report.HasFaults()) m_report.AddFault("has no record");
    m_report.PrintSummary(m_texts ? "message" : "record");
}

void FillCommand::Finish(FillOutputs& outputs) {
    const FillOutputs::Range range = outputs.Finish();
    m_report.AddFiles(range.files);
    for (const std::string& failure : range.failures) m_report.AddFault(failure);
    if (WasInterrupted()) m_report.AddFault("stopped before the end");
}

void AddInputs(CLI::App& command, FillArguments& arguments) {
    run::ImportRequest& request = arguments.request;
    AddArgument(command, "MESSAGE", request.message,
                "the message file with tab fields; with a table of \"library texts\" also a disk");
    AddPath(command, "--data", arguments.data, "FILE|-",
            "the table of texts, CSV with a heading or JSON, whose columns have the names of fields; - is standard "
            "input");
    command
        .add_option("--field", arguments.texts,
                    "a text for a field, by its name or as f0, f1 ...; with --data for each record; may be repeated")
        ->type_name("FIELD=TEXT")
        ->allow_extra_args(false);
    AddText(command, "--name-column", arguments.name_column, "COLUMN",
            "the column with the names of the outputs [they are numbered: 0001, 0002 ...]");
    using enum fill::Overflow;
    AddChoice<fill::Overflow>(command, "--overflow", arguments.overflow,
                              {{"error", kError}, {"cut", kCut}, {"squeeze", kSqueeze}},
                              "a text that is longer than its field is an error, is cut, or has its characters set "
                              "closer");
    AddPath(command, "--fonts", request.fonts, "DIR",
            "the directory of the font files [MACHINE beside the message's directory]");
    AddMaps(command, request.host.maps);
    AddSettings(command, arguments.settings);
}

void AddOutputs(CLI::App& command, FillArguments& arguments) {
    command.add_flag("--list", arguments.list, "list the fields with their fonts, places and texts, and fill none");
    AddDirectory(command, "--out", arguments.directory, "the directory for the files, created if it is missing");
    command.add_option("--format", arguments.formats, "a format of \"export\" to write; may be repeated [png]")
        ->type_name("NAME")
        ->check(CheckFillFormat, "");
    AddNamedFile(command, "--library", arguments.library,
                 "the library to record the filled messages in, created if it is missing");
    AddText(command, "--disk", arguments.disk, "NAME",
            "the name of the disk in the library [that of the table or of the form]; for a table of texts, the disk "
            "in the table");
    AddPath(command, "--write", arguments.write, "DIR|FILE",
            "write message files to a directory; without --data, a file; - is standard output");
    command.add_flag("--overwrite", arguments.replace, "replace files and recordings that exist");
    AddPictureOptions(command, arguments.options);
    AddTextOptions(command, arguments.request.host);
    AddJobs(command, arguments.jobs, "messages written in parallel");
    AddJson(command, arguments.json, "print each record, or each field of --list, as a JSON object in one line");
}

void CheckOptions(const CLI::App& command, const FillArguments& arguments) {
    const bool has_outputs = arguments.HasPictures() || arguments.write;
    if (arguments.list) {
        for (const char* option : {"--data", "--field", "--out", "--library", "--write"}) {
            if (command.count(option) != 0) throw CLI::ExcludesError("--list", option);
        }
        return;
    }
    if (!arguments.data && arguments.texts.empty()) throw CLI::RequiredError("--data, --field or --list");
    if (!has_outputs) throw CLI::RequiredError("--out, --library or --write");
    Require(command, "--name-column", arguments.data.has_value(), "--data");
    Require(command, "--format", arguments.directory.has_value(), "--out");
    // A recording is as small as a sheet.
    const std::vector<std::string> recorded(arguments.library ? 1 : 0, "sheet");
    RequirePictureOptions(command, arguments.directory ? arguments.formats : recorded);
    if (arguments.data && arguments.write == "-")
        throw CLI::ValidationError("--write", "standard output takes the file of --field alone");
    ReserveStandardOutputFor({{"--write", &arguments.write}}, arguments.json);
}

}  // namespace

void AddFillCommand(CLI::App& app, CommandRun& run) {
    const auto arguments = std::make_shared<FillArguments>();
    CLI::App& command = *app.add_subcommand("fill", "Sets texts into the tab fields of a message.");
    AddInputs(command, *arguments);
    AddOutputs(command, *arguments);
    AddStrict(command, arguments->strict);
    AddVerbosity(command, true);
    AddExample(command, "zeltrans fill DISK/MESSAGES/.0013 --data names.csv --name-column NAME --out pictures");
    command.callback([arguments, &command, &run] {
        CheckOptions(command, *arguments);
        run = [arguments] { return FillCommand(*arguments).Run(); };
    });
}

}  // namespace zel::cli
