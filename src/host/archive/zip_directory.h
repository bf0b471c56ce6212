#pragma once

#include <map>
#include <string>

namespace zel::archive {

/// What the list at the end of a zip file tells besides what libarchive reads of it.
struct ZipDirectory {
    /// The record that ends a zip file is there. Without it the file is cut short, and libarchive reads it from its
    /// beginning.
    bool has_end = false;
    /// Names that contain a NUL, by what precedes it, which is all that libarchive gives of them.
    std::map<std::string, std::string> names_with_nul;
};

/// Reads the list of a file that may be a zip file. Empty for any other, and for a list that is damaged or large.
/// @param file  its position is unchanged.
ZipDirectory ReadZipDirectory(int file);

}  // namespace zel::archive
