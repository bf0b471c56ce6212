#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/export/export_job.h"
#include "host/export/source_files.h"
#include "host/export_service.h"
#include "host/library/library.h"

namespace zel::exporter {

/// Exports the recordings of one disk in a library, number by number.
class LibraryExportService : public host::ExportService {
  public:
    /// @param library, job  kept alive by the caller.
    LibraryExportService(library::Library& library, std::string disk, ExportJob& job)
        : m_library(library), m_disk(std::move(disk)), m_job(job), m_files(library) {}

    bool Has(int number) override;
    void Begin(int number) override;
    void Complete(int number, const std::string& path) override;

    /// A line for each recording that could not be read and is missing from the export.
    const std::vector<std::string>& Failures() const noexcept { return m_failures; }

    /// Numbers of the exported recordings that have warnings.
    const std::vector<int>& WithWarnings() const noexcept { return m_with_warnings; }

  private:
    library::Library& m_library;
    const std::string m_disk;
    ExportJob& m_job;
    /// Between Begin and Complete.
    std::optional<library::Recording> m_recording;
    SourceFiles m_files;
    std::vector<std::string> m_failures;
    std::vector<int> m_with_warnings;
};

}  // namespace zel::exporter
