#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/export/exporter.h"

namespace zel::exporter {

/// A format that a user can choose.
struct ExportFormat {
    /// The name by which a user chooses it.
    std::string_view name;
    /// One line for the user.
    std::string_view description;
    std::unique_ptr<Exporter> (*make)(const ExportOptions& options);
    /// ExportOptions::premultiplied changes its files.
    bool has_alpha = false;
};

/// All formats, in the order in which they are listed.
const std::vector<ExportFormat>& ExportFormats();

/// @return null for a name that is none of them.
const ExportFormat* FindExportFormat(std::string_view name);

/// Why these formats cannot be exported to one directory; empty if they can.
std::string_view ConflictOf(const std::vector<std::string>& formats);

}  // namespace zel::exporter
