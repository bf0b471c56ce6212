#include "host/export/source_files.h"

#include <utility>

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

}  // namespace zel::exporter
