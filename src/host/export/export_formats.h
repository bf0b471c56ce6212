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
    /// Names of the options that change its files, as the command has them without "--". Each is in the table of
    /// options.
    std::vector<std::string_view> options{};
    /// Names of the files that it may write, with "*" for the name of a message or for a number. One of them may be in
    /// a folder: "pages/*.html".
    std::vector<std::string_view> files{};
    /// Its pictures have an alpha channel.
    bool has_alpha = false;
    /// It makes one file of a message, which standard output can take.
    bool is_single_file = true;
    bool is_text = false;
    /// The names of its files tell whether colours are premultiplied, so that a directory may have both kinds.
    bool names_tell_alpha = false;
    /// It needs the lists of an export, so that `fill` can't write it.
    bool needs_manifest = false;

    bool Takes(std::string_view option) const { return std::ranges::find(options, option) != options.end(); }
};

/// All formats, in the order in which they are listed.
const std::vector<ExportFormat>& ExportFormats();

/// @return null for a name that is none of them.
const ExportFormat* FindExportFormat(std::string_view name);

/// The formats that take an option, as a user reads it: "png, square or tga".
std::string FormatsWith(std::string_view option);

}  // namespace zel::exporter
