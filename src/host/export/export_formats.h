#pragma once

#include <memory>

#include "host/export/exporter.h"

namespace zel::exporter {

/// The formats, each made in the file of its name.

std::unique_ptr<Exporter> MakePngExporter(const ExportOptions& options);
std::unique_ptr<Exporter> MakeKeyFillExporter(const ExportOptions& options);
std::unique_ptr<Exporter> MakeTgaExporter(const ExportOptions& options);
std::unique_ptr<Exporter> MakeSquareExporter(const ExportOptions& options);
std::unique_ptr<Exporter> MakeJsonExporter(const ExportOptions& options);
std::unique_ptr<Exporter> MakeHtmlExporter(const ExportOptions& options);
std::unique_ptr<Exporter> MakeContactSheetExporter(const ExportOptions& options);

}  // namespace zel::exporter
