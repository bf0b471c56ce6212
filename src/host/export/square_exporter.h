#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// NAME_square.png: the message's frame, resampled to square pixels.
std::unique_ptr<Exporter> MakeSquareExporter(const ExportOptions& options);

}  // namespace zel::exporter
