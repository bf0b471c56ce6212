#pragma once

#include <span>
#include <string>

#include "host/export/exported_file.h"

namespace zel::exporter {

/// A ZIP archive of a few files, compressed. The same files always give the same bytes: their date is the first that
/// the format has.
/// @param files  with their bytes, below 4 GB together; at most 65535.
std::string ZipArchive(std::span<const ExportedFile> files);

}  // namespace zel::exporter
