#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// NAME.json: the message's document and the library's data of the recording.
std::unique_ptr<Exporter> MakeJsonExporter(const ExportOptions& options);

}  // namespace zel::exporter
