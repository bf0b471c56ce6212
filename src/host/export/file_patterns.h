#pragma once

#include <set>
#include <span>
#include <string>
#include <string_view>

#include "host/export/export_formats.h"

namespace zel::exporter {

/// Whether a format may give a file this name, in the directory of an export of a library: NUMBER.png,
/// news_NUMBER_square.png and the like, or one of the lists.
/// @param folder  of the directory in which the file is; empty for the directory itself.
bool IsExportFile(std::string_view folder, std::string_view name);

/// The folders in which formats write files, "pages".
std::set<std::string> FoldersOf(std::span<const ExportFormat> formats);

/// Whether a name fits one of a format, with any text for "*".
bool FitsPattern(std::string_view name, std::string_view pattern) noexcept;

/// Whether the files of a message with this name could have the names of other files of a format: "index", or
/// "0012_A", which is the key of 0012.
/// @param format  name of a format.
bool IsNameOfOthers(std::string_view stem, std::string_view format);

}  // namespace zel::exporter
