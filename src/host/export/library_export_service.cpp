#include "host/export/library_export_service.h"

namespace zel::exporter {

namespace {

/// The fonts of a disk are fewer.
constexpr std::size_t kMostFonts = 64;

}  // namespace

void SourceFiles::AddTo(library::Recording& recording) {
    for (const library::SourceFile& source : recording.sources) {
        if (source.sha256.empty()) continue;
        library::SharedFile file;
        if (const auto known = m_fonts.find(source.sha256); known != m_fonts.end()) {
            file = known->second;
        } else {
            file = m_library.KeptFile(source.sha256);
            if (m_fonts.size() >= kMostFonts) m_fonts.clear();
            if (file && source.font_number) m_fonts[source.sha256] = file;
        }
        if (file) recording.files.push_back(std::move(file));
    }
}

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
