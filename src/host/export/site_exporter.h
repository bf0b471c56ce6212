#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// index.html, and for each message pages/NAME.html, pictures/NAME.png and thumbnails/NAME.png: a site that is opened
/// from its folder, without a server. The index has the messages of earlier exports into the directory, too.
std::unique_ptr<Exporter> MakeSiteExporter(const ExportOptions& options);

}  // namespace zel::exporter
