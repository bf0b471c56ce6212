#include "host/export/library_export_service.h"

namespace zel::exporter {

bool LibraryExportService::Has(int number) {
    return m_library.Has({m_disk, number});
}

void LibraryExportService::Begin(int number) {
    m_recording.reset();
    try {
        m_recording = m_library.Find({m_disk, number});
        if (m_recording && m_job.WantsSources()) m_files.AddTo(*m_recording);
    } catch (const library::LibraryError& error) {
        m_failures.push_back(std::to_string(number) + ": " + error.what());
    }
}

void LibraryExportService::Complete(int number, const std::string& /*path*/) {
    if (m_recording && !m_recording->warnings.empty()) m_with_warnings.push_back(number);
    if (m_recording) m_job.Export(std::move(*m_recording));
    m_recording.reset();
}

}  // namespace zel::exporter
