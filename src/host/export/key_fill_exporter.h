#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// The opaque fill, and the key as grey, with the names of KeyNames. A mixer that keys the fill with the key shows the
/// picture; a premultiplied fill is a shaped one, to which a mixer adds the background times the inverted key.
std::unique_ptr<Exporter> MakeKeyFillExporter(const ExportOptions& options);

}  // namespace zel::exporter
