#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// contact-sheet-001.png and following: pages of thumbnails.
std::unique_ptr<Exporter> MakeContactSheetExporter(const ExportOptions& options);

}  // namespace zel::exporter
