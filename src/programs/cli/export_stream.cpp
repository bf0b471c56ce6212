#include "programs/cli/export_stream.h"

#include <memory>
#include <stdexcept>
#include <vector>

#include "base/text.h"
#include "host/export/export_subject.h"
#include "host/export/source_files.h"

namespace zel::cli {

void SingleExportService::Begin(int number) {
    if (m_count++ == 0) m_recording = m_library.Find({m_disk, number});
    if (m_recording) exporter::SourceFiles(m_library).AddTo(*m_recording);
}

std::string ExportedFileOf(const library::Recording& recording, const std::string& format,
                           const exporter::ExportOptions& options) {
    const std::unique_ptr<exporter::Exporter> exporter = exporter::FindExportFormat(format)->make(options);
    exporter::ExportSubject subject(recording, options);
    std::vector<exporter::ExportedFile> files = exporter->Export(subject);
    if (files.size() != 1) throw std::runtime_error(base::NumberedName(recording.number) + ": makes no single file");
    return std::move(files.front().bytes);
}

}  // namespace zel::cli
