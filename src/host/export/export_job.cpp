#include "host/export/export_job.h"

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

#include "host/export/earlier_export.h"
#include "host/export/export_formats.h"
#include "host/export/file_names.h"
#include "host/export/message_title.h"
#include "host/export/thumbnail.h"

namespace zel::exporter {

namespace {

std::vector<std::string> WithoutRepeats(const std::vector<std::string>& names) {
    std::vector<std::string> once;
    for (const std::string& name : names) {
        if (std::ranges::find(once, name) == once.end()) once.push_back(name);
    }
    return once;
}

void CreateDirectory(const std::filesystem::path& directory) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) throw std::runtime_error(directory.string() + ": could not be created: " + error.message());
    if (!std::filesystem::is_directory(directory, error)) {
        throw std::runtime_error(directory.string() + ": is not a directory");
    }
}

/// Runs a step. @return the reason of its failure; empty after success.
std::string ReasonOf(const std::function<void()>& step) {
    try {
        step();
    } catch (const std::bad_alloc&) {
        return "out of memory";
    } catch (const std::exception& error) {
        return error.what();
    }
    return {};
}

}  // namespace

struct ExportJob::Outcome {
    /// The summary's line for a message that can't be exported at all; otherwise empty.
    std::string rejection;
    ExportedMessage message;
    std::vector<ManifestFile> files;
    std::vector<std::string> failures;
};

ExportJob::ExportJob(std::filesystem::path directory, const std::vector<std::string>& formats,
                     const ExportOptions& options, int jobs)
    : m_bag(options.bag ? std::optional<Bag>(directory) : std::nullopt),
      m_directory(m_bag ? m_bag->Payload() : std::move(directory)),
      m_formats(WithoutRepeats(formats)),
      m_options(options),
      // One job needs no threads.
      m_workers(jobs > 1 ? static_cast<std::size_t>(jobs) : 0, static_cast<std::size_t>(std::max(jobs, 1)),
                [this](Outcome outcome) { Collect(std::move(outcome)); }) {
    if (!m_bag && IsInBag(m_directory))
        throw std::runtime_error(m_directory.string() + ": is in a bag, which only an export as a bag can change");
    m_earlier = EarlierExport(m_directory);
    m_options.fill_beside_png = HasName(m_formats, "png") || HasName(m_earlier.formats, "png");
    m_options.template_beside_html = HasName(m_formats, "html") || HasName(m_earlier.formats, "html");
    for (const std::string& name : m_formats) {
        const ExportFormat* format = FindExportFormat(name);
        if (format == nullptr) throw std::runtime_error("there is no export format " + name);
        m_exporters.push_back(format->make(m_options));
        m_wants_thumbnails = m_wants_thumbnails || m_exporters.back()->WantsThumbnails();
        m_wants_files_beside = m_wants_files_beside || m_exporters.back()->WantsFilesBeside();
    }
    m_manifest.formats = m_formats;
    m_manifest.premultiplied = m_options.premultiplied;
    if (m_options.frame) m_manifest.frame = TextOf(*m_options.frame) + " " + NameOf(m_options.fit);
    CheckGoTogether(m_earlier, m_manifest);
    for (const auto& exporter : m_exporters) exporter->Begin(m_directory, m_earlier);
    CreateDirectory(m_directory);
}

ExportJob::~ExportJob() = default;

void ExportJob::Export(library::Recording recording) {
    if (const std::string reason = ReasonOf([&] { ReserveStem(recording); }); !reason.empty()) {
        Outcome rejected;
        rejected.rejection = std::to_string(recording.number) + ": " + reason;
        m_workers.Give([rejected = std::move(rejected)] { return rejected; });
        return;
    }
    m_workers.Give([this, recording = std::move(recording)] { return Work(recording); });
}

/// @throws std::runtime_error for a message whose files can't have unique names.
void ExportJob::ReserveStem(const library::Recording& recording) {
    const std::string stem = StemOf(recording.disk, recording.number);
    if (!m_stems.insert(stem).second) throw std::runtime_error("another message has the file name " + stem);
}

bool ExportJob::WantsSources() const {
    return std::ranges::any_of(m_exporters, [](const auto& exporter) { return exporter->WantsSources(); });
}

ExportSummary ExportJob::Finish() {
    m_workers.Finish();
    AddEarlier(std::move(m_earlier), m_manifest);
    for (std::size_t n = 0; n < m_exporters.size(); ++n) {
        const std::string reason = ReasonOf([&] { WriteRangeFiles(m_exporters[n]->Finish(m_manifest)); });
        if (!reason.empty()) m_summary.failures.push_back(m_formats[n] + ": " + reason);
    }
    const std::string reason = ReasonOf([this] { WriteManifest(); });
    if (!reason.empty()) m_summary.failures.push_back(reason);
    return std::move(m_summary);
}

/// Several threads run it at once.
ExportJob::Outcome ExportJob::Work(const library::Recording& recording) const {
    Outcome outcome;
    outcome.message.disk = recording.disk;
    outcome.message.number = recording.number;
    outcome.message.title = TitleOf(recording.text);
    ExportSubject subject(recording, m_options);
    outcome.message.stem = subject.Stem();
    for (const bool last : {false, true}) {
        if (last && m_wants_files_beside) subject.SetFilesBeside(FilesBeside(recording, outcome.files));
        for (std::size_t n = 0; n < m_exporters.size(); ++n) {
            if (m_exporters[n]->WantsFilesBeside() == last) ExportIn(n, subject, outcome);
        }
    }
    if (m_wants_thumbnails && !recording.picture.empty()) {
        const std::string reason =
            ReasonOf([&] { outcome.message.thumbnail = Thumbnail(subject.Frame(), recording.standard); });
        if (!reason.empty()) outcome.failures.push_back("thumbnail: " + reason);
    }
    for (const ManifestFile& file : outcome.files) outcome.message.files.push_back(file.name);
    return outcome;
}

/// The files of earlier exports and of this one. Exports to several threads, none of which changes m_earlier.
std::vector<std::string> ExportJob::FilesBeside(const library::Recording& recording,
                                                const std::vector<ManifestFile>& files) const {
    std::vector<std::string> names;
    for (const ManifestFile& file : files) names.push_back(file.name);
    if (const ManifestMessage* earlier = FindMessage(m_earlier, {recording.disk, recording.number})) {
        for (const ManifestFile& file : earlier->files) {
            if (!HasName(names, file.name)) names.push_back(file.name);
        }
    }
    return names;
}

void ExportJob::ExportIn(std::size_t format, ExportSubject& message, Outcome& outcome) const {
    const std::string reason = ReasonOf([&] {
        for (const ExportedFile& file : m_exporters[format]->Export(message))
            outcome.files.push_back(WriteExported(m_directory, file));
    });
    for (const std::string& note : message.TakeNotes()) outcome.failures.push_back(m_formats[format] + ": " + note);
    if (!reason.empty()) outcome.failures.push_back(m_formats[format] + ": " + reason);
}

void ExportJob::Collect(Outcome outcome) {
    ++m_summary.messages;
    if (!outcome.rejection.empty()) {
        ++m_summary.failed_messages;
        m_summary.failures.push_back(std::move(outcome.rejection));
        return;
    }
    const ExportedMessage& message = outcome.message;
    for (std::size_t n = 0; n < m_exporters.size(); ++n) {
        const std::string reason = ReasonOf([&] { WriteRangeFiles(m_exporters[n]->Collect(message)); });
        if (!reason.empty()) m_summary.failures.push_back(m_formats[n] + ": " + reason);
    }
    for (const ManifestFile& file : outcome.files) Count(file);
    for (const std::string& failure : outcome.failures) {
        m_summary.failures.push_back(message.stem + ": " + failure);
    }
    if (!outcome.failures.empty()) ++m_summary.failed_messages;
    m_manifest.messages.push_back(
        {message.disk, message.number, message.title, std::move(outcome.files), std::move(outcome.failures)});
}

void ExportJob::WriteRangeFiles(const std::vector<ExportedFile>& files) {
    for (const ExportedFile& file : files) {
        const ManifestFile written = WriteExported(m_directory, file);
        Count(written);
        PutFile(written, m_manifest.range_files);
    }
}

void ExportJob::WriteManifest() {
    WriteRangeFiles({{kManifestName, ManifestJson(m_manifest)}});
    Count(WriteExported(m_directory, {kChecksumsName, ChecksumLines(m_manifest)}));
    if (!m_bag) return;
    std::vector<ManifestFile> tags;
    m_bag->Write(m_manifest, tags);
    for (const ManifestFile& file : tags) Count(file);
}

void ExportJob::Count(const ManifestFile& file) {
    ++m_summary.files;
    m_summary.bytes += file.size;
}

}  // namespace zel::exporter
