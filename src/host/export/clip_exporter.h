#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// NAME_CODEC_ALPHA.mov, by the program ffmpeg: the picture, with fades. Without ffmpeg, a folder NAME_CODEC_ALPHA with
/// a PNG for each frame, and NAME_CODEC_ALPHA.txt with the command line that makes the clip; Finish then reports that.
std::unique_ptr<Exporter> MakeClipExporter(const ExportOptions& options);

}  // namespace zel::exporter
