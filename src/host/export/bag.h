#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/export/manifest.h"

namespace zel::exporter {

/// A directory as a BagIt bag (RFC 8493) with an export in its folder "data". Its tag files are bagit.txt,
/// bag-info.txt, manifest-sha256.txt and tagmanifest-sha256.txt.
class Bag {
  public:
    /// @param directory  missing, empty, or a bag that contains an export.
    /// @throws std::runtime_error with the reason for any other.
    explicit Bag(std::filesystem::path directory);

    /// Where the export is.
    std::filesystem::path Payload() const { return m_directory / "data"; }

    /// Writes the tag files. The payload's checksums are those of the export's manifest; any other file in the payload
    /// is read. Lines of bag-info.txt that the bag had already are kept, apart from its own.
    /// @param files  those that this call has made are added.
    /// @throws std::runtime_error with the file's name and the reason.
    void Write(const Manifest& manifest, std::vector<ManifestFile>& files) const;

  private:
    std::filesystem::path m_directory;
};

/// Whether a directory is a bag, or the payload of one, whose lists another export would make wrong.
bool IsInBag(const std::filesystem::path& directory);

/// The names of the tag files.
bool IsTagFile(std::string_view name) noexcept;

}  // namespace zel::exporter
