#include "host/export/library_shelf.h"

namespace zel::exporter {

bool LibraryShelf::Has(int number) {
    return m_library.Has({m_disk, number});
}

void LibraryShelf::Begin(int number) {
    m_recording.reset();
    try {
        m_recording = m_library.Find({m_disk, number});
    } catch (const library::LibraryError& error) {
        m_failures.push_back(std::to_string(number) + ": " + error.what());
    }
}

void LibraryShelf::Complete(int /*number*/, const std::string& /*path*/) {
    if (m_recording) m_job.Export(std::move(*m_recording));
    m_recording.reset();
}

}  // namespace zel::exporter
