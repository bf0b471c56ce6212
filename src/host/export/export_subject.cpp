#include "host/export/export_subject.h"

#include <stdexcept>
#include <utility>

#include "host/export/file_names.h"
#include "host/export/frame.h"
#include "host/picture/png_reader.h"

namespace zel::exporter {

ExportSubject::ExportSubject(const library::Recording& recording)
    : ExportSubject(recording, StemOf(recording.disk, recording.number)) {}

ExportSubject::ExportSubject(const library::Recording& recording, std::string stem)
    : m_recording(recording), m_stem(std::move(stem)) {}

const picture::Picture& ExportSubject::Frame() {
    if (!m_frame) {
        if (m_recording.picture.empty()) throw std::runtime_error("there is no picture");
        m_frame = PlacedOnFrame(picture::DecodePng(m_recording.picture), m_recording.standard);
    }
    return *m_frame;
}

}  // namespace zel::exporter
