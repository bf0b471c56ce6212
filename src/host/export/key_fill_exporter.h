#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// NAME.png and NAME_A.png: the opaque fill, and the key as grey. A mixer that keys the fill with the key shows the
/// picture.
std::unique_ptr<Exporter> MakeKeyFillExporter(const ExportOptions& options);

}  // namespace zel::exporter
