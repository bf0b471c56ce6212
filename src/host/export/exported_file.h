#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <system_error>

#include "base/whole_file.h"
#include "host/export/manifest.h"

namespace zel::exporter {

/// A file for the export's directory.
struct ExportedFile {
    /// Its name, or a path with "/" to a folder in the directory.
    std::string name;
    std::string bytes;
    /// For a file that is made while it is written, instead of `bytes`. Receives a descriptor of an empty regular file,
    /// and throws std::runtime_error with the reason if it can't write all.
    std::function<void(int descriptor)> write{};
};

/// Writes a file, and makes its folder. It appears complete or not at all.
/// @return the reason of a failure, EEXIST for a file that is kept.
/// @throws std::runtime_error as ExportedFile::write
std::error_code TryWriteExported(const std::filesystem::path& file, const ExportedFile& contents,
                                 base::UnfinishedFile::Existing existing);

/// Writes a file into a directory, in place of one with its name, and describes it for the manifest.
/// @throws std::runtime_error with the file's name and the reason; as ExportedFile::write
ManifestFile WriteExported(const std::filesystem::path& directory, const ExportedFile& file);

/// What the manifest has of a file in the directory, which is read.
/// @throws std::runtime_error with the file's name and the reason
ManifestFile DescribeFile(const std::filesystem::path& directory, const std::string& name);

}  // namespace zel::exporter
