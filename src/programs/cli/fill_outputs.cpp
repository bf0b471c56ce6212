#include "programs/cli/fill_outputs.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "base/fold_case.h"
#include "base/terminal_text.h"
#include "host/document/message_warnings.h"
#include "host/export/export_formats.h"
#include "host/export/file_patterns.h"
#include "host/export/message_title.h"
#include "host/export/thumbnail.h"
#include "host/recorder/disk_names.h"
#include "host/run/import_run.h"
#include "programs/cli/command.h"
#include "programs/cli/interrupt.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

/// Recordings that are stored at once. Each transaction waits for the disk.
constexpr std::size_t kChunk = 12;
/// The largest number of a recording.
constexpr int kLastNumber = 9999;
/// Bytes of an output's name, which leaves room for what the formats add.
constexpr std::size_t kLongestName = 200;

bool HasFormat(const FillArguments& arguments, std::string_view name) {
    return arguments.directory && std::ranges::find(arguments.formats, name) != arguments.formats.end();
}

void MakeDirectory(const std::string& directory) {
    std::error_code error;
    fs::create_directories(directory, error);
    if (!error && !fs::is_directory(directory, error)) error = std::make_error_code(std::errc::not_a_directory);
    if (error) throw CommandError(directory + ": can't be made: " + error.message());
}

/// Runs a step of a message. Its failure is the message's alone.
template <class Step>
void Attempt(FillResult& result, Step step) {
    try {
        step();
    } catch (const library::LibraryError&) {
        throw;
    } catch (const std::runtime_error& error) {
        result.faults.push_back({{}, error.what()});
    }
}

/// Names that some file systems keep for devices, and names of lists that exports write.
bool IsReserved(std::string_view name) {
    for (const std::string_view reserved : {"CON", "PRN", "AUX", "NUL", "manifest", "SHA256SUMS"}) {
        if (base::EqualsFolded(name, reserved)) return true;
    }
    const bool has_digit = name.size() == 4 && name[3] >= '0' && name[3] <= '9';
    return has_digit && (base::EqualsFolded(name.substr(0, 3), "COM") || base::EqualsFolded(name.substr(0, 3), "LPT"));
}

}  // namespace

std::string OutputNameError(const FillArguments& arguments, const std::string& name) {
    if (name.empty()) return "the name is empty";
    const std::string quoted = "\"" + name.substr(0, kLongestName) + "\" can't be the name of a file: ";
    if (name.size() > kLongestName) return quoted + "it is longer than " + std::to_string(kLongestName) + " bytes";
    if (name.find_first_of("/\\<>:\"|?*") != std::string::npos) return quoted + "it has one of / \\ < > : \" | ? *";
    if (base::TerminalText(name) != name) return quoted + "it has an invisible character";
    if (name.front() == '.') return quoted + "it begins with a dot";
    if (name.front() == ' ' || name.back() == ' ' || name.back() == '.')
        return quoted + "it begins or ends with a blank, or ends with a dot";
    if (IsReserved(name.substr(0, name.find('.')))) return quoted + "it is reserved";
    const bool is_other_file = arguments.directory && std::ranges::any_of(arguments.formats, [&](const auto& format) {
                                   return exporter::IsNameOfOthers(name, format);
                               });
    return is_other_file ? quoted + "a file of a format has such a name" : std::string();
}

bool IsFilledFile(const FillArguments& arguments, std::string_view name) {
    return std::ranges::any_of(arguments.formats, [&](const std::string& format) {
        return std::ranges::any_of(exporter::FindExportFormat(format)->files,
                                   [&](std::string_view pattern) { return exporter::FitsPattern(name, pattern); });
    });
}

/// A message on its way.
struct FillOutputs::Work {
    FilledMessage message;
    std::optional<ScratchMessage> file;
    std::optional<recorder::ArrivedMessage> arrived;
};

struct FillOutputs::Outcome {
    FillResult result;
    std::optional<library::Recording> recording;
    std::optional<exporter::ExportedMessage> exported;
};

FillOutputs::FillOutputs(const FillArguments& arguments, FillSource source, std::function<void(const FillResult&)> done)
    : m_arguments(arguments), m_source(std::move(source)), m_done(std::move(done)), m_digests(WasInterrupted) {
    if (arguments.write && !arguments.write->empty()) MakeDirectory(*arguments.write);
    if (arguments.directory) {
        MakeDirectory(*arguments.directory);
        exporter::ExportOptions options = arguments.options;
        options.fill_beside_png = HasFormat(arguments, "png");
        options.template_beside_html = HasFormat(arguments, "html");
        const std::set<std::string> formats(arguments.formats.begin(), arguments.formats.end());
        for (const std::string& name : formats) {
            m_exporters.push_back(exporter::FindExportFormat(name)->make(options));
            m_wants_thumbnails = m_wants_thumbnails || m_exporters.back()->WantsThumbnails();
            m_context.with_files = m_context.with_files || m_exporters.back()->WantsSources();
        }
        m_has_index = HasFormat(arguments, "html");
    }
    m_context.font_directory = m_source.font_directory;
    m_context.png_effort = arguments.options.effort;
    m_context.options = recorder::DescribeOptions(arguments.request.host, m_digests);
    if (arguments.library) {
        m_context.with_files = true;
        m_library = std::make_unique<library::Library>(*arguments.library, library::Access::kWrite);
        m_existing = std::make_unique<library::Library>(*arguments.library, library::Access::kRead);
        m_context.disk = arguments.disk ? *arguments.disk : recorder::DiskNames().NameOf(*m_library, m_source.path);
    }
    if (arguments.HasPictures()) {
        m_scratch = std::make_unique<ScratchMessages>();
        m_context.relocation = {m_scratch->Directory(), m_source.path};
    }
    const auto jobs = static_cast<std::size_t>(arguments.jobs);
    m_workers = std::make_unique<base::OrderedWorkers<Outcome>>(
        jobs > 1 ? jobs : 0, base::WorkerLimits{std::max<std::size_t>(jobs, 2), kChunk},
        [this](Outcome outcome) { Take(std::move(outcome)); });
}

FillOutputs::~FillOutputs() = default;

void FillOutputs::Report(FillResult result) {
    m_workers->Give([result = std::move(result)]() mutable { return Outcome{std::move(result), {}, {}}; });
}

void FillOutputs::Give(FilledMessage message) {
    Work work{std::move(message), {}, {}};
    FillResult& result = work.message.result;
    if (m_library) {
        const library::RecordingKey key{m_context.disk, work.message.number};
        if (key.number > kLastNumber) {
            result.faults.push_back({{}, "a library has no number above " + std::to_string(kLastNumber)});
        } else if (!m_arguments.replace && m_existing->Has(key)) {
            result.faults.push_back({{},
                                     *m_arguments.library + ": number " + std::to_string(key.number) + " of \"" +
                                         key.disk + "\" is recorded already; --overwrite replaces it"});
        }
    }
    if (result.faults.empty() && m_arguments.HasPictures()) Attempt(result, [&] { Import(work); });
    if (!result.faults.empty()) return Report(std::move(result));
    m_workers->Give([this, work = std::move(work)]() mutable { return Do(std::move(work)); });
}

void FillOutputs::Import(Work& work) {
    work.file = m_scratch->Write(work.message.number, work.message.bytes);
    run::ImportRequest request = m_arguments.request;
    request.message = work.file->Path();
    request.fonts = m_source.font_directory;
    host::HostObserver* const observers[] = {&m_pictures};
    run::ImportOutcome outcome = run::RunImport(request, observers);
    if (!outcome.Done()) throw std::runtime_error(m_context.relocation.InText(outcome.failure));
    for (std::string& warning : document::WarningsOf(*outcome.message)) {
        const auto& known = m_source.known_warnings;
        if (std::ranges::find(known, warning) == known.end())
            work.message.result.notes.push_back({{}, m_context.relocation.InText(std::move(warning))});
    }
    work.arrived = recorder::ArrivedMessage{work.message.number, std::move(*outcome.message), m_pictures.TakePicture(),
                                            m_pictures.RgbaError()};
}

void FillOutputs::Write(const std::string& directory, const exporter::ExportedFile& file) const {
    using Existing = base::UnfinishedFile::Existing;
    const std::string path = (fs::path(directory) / file.name).string();
    const std::error_code error =
        exporter::TryWriteExported(path, file, m_arguments.replace ? Existing::kReplace : Existing::kKeep);
    if (error == std::errc::file_exists) throw std::runtime_error(path + ": exists already; --overwrite replaces it");
    if (error) throw std::runtime_error(path + ": can't be written: " + error.message());
}

// Several threads run it at once.
FillOutputs::Outcome FillOutputs::Do(Work work) {
    Outcome outcome{std::move(work.message.result), {}, {}};
    FillResult& result = outcome.result;
    if (m_arguments.write) {
        const files::Bytes& bytes = work.message.bytes;
        Attempt(result, [&] {
            Write(*m_arguments.write,
                  {work.message.file_name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()}});
            result.files.push_back((fs::path(*m_arguments.write) / work.message.file_name).string());
        });
    }
    if (!work.arrived) return outcome;
    library::Recording recording = recorder::MakeRecording(*work.arrived, m_context, m_digests);
    if (work.arrived->picture) m_pictures.GiveBack(std::move(*work.arrived->picture));
    Attempt(result, [&] { Export(recording, outcome); });
    if (m_library && result.faults.empty()) outcome.recording = std::move(recording);
    return outcome;
}

void FillOutputs::Export(const library::Recording& recording, Outcome& outcome) {
    if (m_exporters.empty()) return;
    exporter::ExportSubject subject(recording, outcome.result.name, m_arguments.options);
    for (const auto& exporter : m_exporters) {
        Attempt(outcome.result, [&] {
            for (const exporter::ExportedFile& file : exporter->Export(subject)) {
                Write(*m_arguments.directory, file);
                outcome.result.files.push_back((fs::path(*m_arguments.directory) / file.name).string());
            }
            for (std::string& note : subject.TakeNotes()) outcome.result.notes.push_back({{}, std::move(note)});
        });
    }
    if (!outcome.result.faults.empty() || (!m_wants_thumbnails && !m_has_index)) return;
    exporter::ExportedMessage exported{outcome.result.name, {}, -1, exporter::TitleOf(recording.text), {}, {}};
    if (m_wants_thumbnails && !recording.picture.empty())
        exported.thumbnail = exporter::Thumbnail(subject.Frame(), recording.standard);
    for (const std::string& file : outcome.result.files) exported.files.push_back(fs::path(file).filename().string());
    outcome.exported = std::move(exported);
}

void FillOutputs::Take(Outcome outcome) {
    Collect(outcome);
    m_waiting.push_back(std::move(outcome.result));
    if (outcome.recording) m_chunk.push_back(std::move(*outcome.recording));
    if (m_chunk.empty() || m_chunk.size() >= kChunk) Store();
}

// What is made of several messages.
void FillOutputs::Collect(Outcome& outcome) {
    if (!outcome.exported) return;
    for (const auto& exporter : m_exporters) {
        Attempt(outcome.result, [&] { WriteRangeFiles(exporter->Collect(*outcome.exported)); });
    }
    if (!m_has_index) return;
    exporter::ManifestMessage entry;
    entry.title = outcome.exported->title;
    for (const std::string& file : outcome.exported->files) entry.files.push_back({file, 0, {}});
    m_manifest.messages.push_back(std::move(entry));
}

void FillOutputs::WriteRangeFiles(const std::vector<exporter::ExportedFile>& files) {
    for (const exporter::ExportedFile& file : files) {
        Write(*m_arguments.directory, file);
        ++m_range.files;
    }
}

void FillOutputs::Store() {
    if (!m_chunk.empty()) m_library->Record(m_chunk);
    for (FillResult& result : m_waiting) {
        result.is_recorded = m_library != nullptr && result.faults.empty();
        m_done(result);
    }
    m_chunk.clear();
    m_waiting.clear();
}

FillOutputs::Range FillOutputs::Finish() {
    m_workers->Finish();
    Store();
    for (const auto& exporter : m_exporters) {
        FillResult range;
        Attempt(range, [&] { WriteRangeFiles(exporter->Finish(m_manifest)); });
        for (const FillRemark& fault : range.faults) m_range.failures.push_back(fault.text);
    }
    return std::move(m_range);
}

}  // namespace zel::cli
