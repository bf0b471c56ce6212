#pragma once

#include <string>

#include "host/archive/unpacked_archive.h"

namespace zel::cli {

/// Prints an error for each entry of an archive that is refused, and for what could not be read.
/// @param path  of the archive, as the user gave it.
void PrintArchiveFaults(const std::string& path, const archive::UnpackedArchive& unpacked);

}  // namespace zel::cli
