#pragma once

#include <string>
#include <vector>

#include <CLI/App.hpp>

#include "host/export/export_options.h"

namespace zel::cli {

/// For CLI11: why a name is none of a format; empty if it is one.
std::string CheckFormat(const std::string& name);
/// Likewise, of a format that "fill" can write.
std::string CheckFillFormat(const std::string& name);

/// Adds the options of the formats, exporter::ExportOptionTable.
void AddPictureOptions(CLI::App& command, exporter::ExportOptions& options);

/// @param formats  those that the command writes.
/// @throws CLI::ValidationError for a picture option that changes none of them, or that has no effect beside the
///         others.
void RequirePictureOptions(const CLI::App& command, const std::vector<std::string>& formats);

}  // namespace zel::cli
