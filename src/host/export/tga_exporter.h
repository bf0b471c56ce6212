#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// NAME.tga: the message's frame, 32 bits a pixel, uncompressed or compressed by run lengths.
std::unique_ptr<Exporter> MakeTgaExporter(const ExportOptions& options);

}  // namespace zel::exporter
