#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "base/ordered_workers.h"
#include "host/export/bag.h"
#include "host/export/exporter.h"
#include "host/export/manifest.h"
#include "host/library/recording.h"

namespace zel::exporter {

/// The result of an export.
struct ExportSummary {
    /// Number of messages passed to Export.
    int messages = 0;
    /// Number of messages with a failure.
    int failed_messages = 0;
    /// Number of files written, including manifest.json and SHA256SUMS.
    int files = 0;
    /// Size of those files together.
    std::uint64_t bytes = 0;
    /// One line each: the message, the format and the reason, such as "0012: png: there is no picture". The line of a
    /// failure of the whole range begins with the format or with the file.
    std::vector<std::string> failures;
};

/// Exports messages as files of a directory: the files of each format, then manifest.json and SHA256SUMS. A file
/// appears complete or not at all. A failure is reported in the summary and stops nothing else. Of earlier exports into
/// the directory, everything that has not been replaced or removed remains in the lists.
class ExportJob {
  public:
    /// @param directory  created if it is missing; with the option `bag` the bag, of which the files are the payload.
    /// @param formats    names of ExportFormats; a repeated name counts once.
    /// @param jobs       number of messages processed in parallel, at least 1; the files don't depend on it.
    /// @throws std::runtime_error for an unknown name, for a directory that can't be created, and for one with a
    ///         foreign manifest.json or with files that the new ones can't be added to.
    ExportJob(std::filesystem::path directory, const std::vector<std::string>& formats, const ExportOptions& options,
              int jobs = 1);
    /// Waits for the messages in progress.
    ~ExportJob();
    ExportJob(const ExportJob&) = delete;
    ExportJob& operator=(const ExportJob&) = delete;

    /// Exports a message. Messages are passed in the order of their keys. With several jobs the call may return before
    /// the message is written; at most as many messages as jobs are in memory.
    void Export(library::Recording recording);

    /// Whether Recording::files is used.
    bool WantsSources() const;

    /// Waits for all messages and writes the files of the whole range. Called once, last.
    ExportSummary Finish();

  private:
    struct Outcome;

    void ReserveStem(const library::Recording& recording);
    Outcome Work(const library::Recording& recording) const;
    void ExportIn(std::size_t format, ExportSubject& message, Outcome& outcome) const;
    std::vector<std::string> FilesBeside(const library::Recording& recording,
                                         const std::vector<ManifestFile>& files) const;

    void Collect(Outcome outcome);
    void WriteRangeFiles(const std::vector<ExportedFile>& files);
    void WriteManifest();
    void Count(const ManifestFile& file);

    /// If the export is one.
    std::optional<Bag> m_bag;
    const std::filesystem::path m_directory;
    std::vector<std::string> m_formats;
    ExportOptions m_options;
    /// In the order of m_formats.
    std::vector<std::unique_ptr<Exporter>> m_exporters;
    bool m_wants_thumbnails = false, m_wants_files_beside = false;
    /// Of the messages passed to Export.
    std::set<std::string> m_stems;
    /// Changed on the thread of m_workers that collects the outcomes.
    Manifest m_manifest;
    /// Until Finish adds it to m_manifest.
    Manifest m_earlier;
    ExportSummary m_summary;
    /// The last member: its destructor waits for work that uses the others.
    base::OrderedWorkers<Outcome> m_workers;
};

}  // namespace zel::exporter
