#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// NAME.html: the message as a page that fills its fields; NAME_template.html beside the pages of the format html.
std::unique_ptr<Exporter> MakeTemplateExporter(const ExportOptions& options);

}  // namespace zel::exporter
