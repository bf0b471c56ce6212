#pragma once

#include <algorithm>
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
    /// Names of the options that change its files, as the command has them without "--". Every option of a format is
    /// one of ExportOptions.
    std::vector<std::string_view> options{};

    bool Takes(std::string_view option) const { return std::ranges::find(options, option) != options.end(); }
};

/// All formats, in the order in which they are listed.
const std::vector<ExportFormat>& ExportFormats();

/// @return null for a name that is none of them.
const ExportFormat* FindExportFormat(std::string_view name);

/// The formats that take an option, as a user reads it: "png, square or tga".
std::string FormatsWith(std::string_view option);

}  // namespace zel::exporter
