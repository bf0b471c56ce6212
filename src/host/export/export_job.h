#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <future>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/export/exporter.h"
#include "host/export/manifest.h"
#include "host/library/recording.h"

namespace zel::exporter {

/// What an export came to.
struct ExportSummary {
    int messages = 0;         ///< that were given to it.
    int failed_messages = 0;  ///< of which something is missing.
    int files = 0;            ///< that were written, manifest.json and SHA256SUMS among them.
    std::uint64_t bytes = 0;  ///< of those files.
    /// One line each: the message, the format and the reason, such as "0012: png: there is no picture". What concerns
    /// the whole range begins with the format or with the file.
    std::vector<std::string> failures;
};

/// An export of messages into files of a directory: each format's files, then manifest.json and SHA256SUMS. A file
/// appears whole or not at all. What fails for one message is told in the summary and stops nothing else.
class ExportJob {
  public:
    /// @param directory  made if it is missing.
    /// @param formats    names of the table of formats; one that is named twice counts once.
    /// @param jobs       messages that are worked on at once, at least 1; the files are the same for every number.
    /// @throws std::runtime_error for a name that is in no table, for formats that would write the same file, and for a
    ///         directory that can't be made.
    ExportJob(std::filesystem::path directory, const std::vector<std::string>& formats, const ExportOptions& options,
              int jobs = 1);
    /// Waits for the work under way.
    ~ExportJob();
    ExportJob(const ExportJob&) = delete;
    ExportJob& operator=(const ExportJob&) = delete;

    /// Exports a message, in the order of their keys. With several jobs the work may go on when the call returns; never
    /// more messages than jobs are held.
    void Export(const library::Recording& recording);

    /// Ends the work and writes the files of the whole range. Called once, last.
    ExportSummary Finish();

  private:
    struct Outcome;

    void CheckNames(const library::Recording& recording);
    Outcome Work(const library::Recording& recording) const;
    void ExportIn(std::size_t format, ExportSubject& message, Outcome& outcome) const;
    ManifestFile Write(const ExportedFile& file) const;

    void CollectOldest();
    void Collect(Outcome outcome);
    void WriteRangeFiles(const std::vector<ExportedFile>& files);
    void WriteManifest();
    void Count(const ManifestFile& file);

    const std::filesystem::path m_directory;
    const std::size_t m_jobs;
    std::vector<std::string> m_formats;
    std::vector<std::unique_ptr<Exporter>> m_exporters;  ///< in the order of m_formats.
    bool m_wants_thumbnails = false;
    std::set<std::string> m_stems;  ///< of the messages so far.
    Manifest m_manifest;
    ExportSummary m_summary;
    std::deque<std::future<Outcome>> m_under_way;  ///< oldest first; last member, so that it is waited for first.
};

}  // namespace zel::exporter
