#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// A folder NAME with an OGraf graphic: NAME.ograf.json, its module and a thumbnail; and the same as NAME.zip.
std::unique_ptr<Exporter> MakeOgrafExporter(const ExportOptions& options);

}  // namespace zel::exporter
