#include "host/export/export_subject.h"

#include <stdexcept>
#include <utility>

#include "host/export/file_names.h"
#include "host/export/frame.h"
#include "host/export/framed.h"
#include "host/export/glyph_bleed.h"
#include "host/picture/png_reader.h"
#include "host/picture/png_writer.h"

namespace zel::exporter {

ExportSubject::ExportSubject(const library::Recording& recording, const ExportOptions& options)
    : ExportSubject(recording, StemOf(recording.disk, recording.number), options) {}

ExportSubject::ExportSubject(const library::Recording& recording, std::string stem, const ExportOptions& options)
    : m_recording(recording), m_stem(std::move(stem)), m_options(options) {}

const picture::Picture& ExportSubject::Frame() {
    if (!m_frame) {
        if (m_recording.picture.empty()) throw std::runtime_error("there is no picture");
        m_frame = PlacedOnFrame(picture::DecodePng(m_recording.picture), m_recording.standard);
    }
    return *m_frame;
}

std::string ExportSubject::FramePng() {
    const picture::Picture& frame = Frame();
    const bool as_recorded = m_recording.width == frame.width && m_recording.height == frame.height;
    return as_recorded ? m_recording.picture : picture::EncodePng(frame);
}

const picture::Picture& ExportSubject::Output() {
    const bool bleeds = m_options.clear_colour == ClearColour::kGlyph;
    if (!m_options.frame && !bleeds) return Frame();
    if (!m_output) {
        picture::Picture output =
            m_options.frame ? Framed(Frame(), m_recording.standard, *m_options.frame, m_options.fit) : Frame();
        m_output = bleeds ? WithBleed(std::move(output)) : std::move(output);
    }
    return *m_output;
}

}  // namespace zel::exporter
