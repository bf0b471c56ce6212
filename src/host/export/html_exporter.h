#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// NAME.html: a page for each message; index.html: the list of the pages.
std::unique_ptr<Exporter> MakeHtmlExporter(const ExportOptions& options);

}  // namespace zel::exporter
