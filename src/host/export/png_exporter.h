#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// NAME.png: the message's frame with its alpha and pixel aspect ratio.
std::unique_ptr<Exporter> MakePngExporter(const ExportOptions& options);

}  // namespace zel::exporter
