#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zel::exporter {

/// A file that was written.
struct ManifestFile {
    std::string name;
    std::uint64_t size = 0;  ///< bytes
    std::string sha256;
};

/// A message of the export, with its files.
struct ManifestMessage {
    std::string disk;
    int number = 0;
    std::string title;
    std::vector<ManifestFile> files;
    std::vector<std::string> failures;  ///< formats that it couldn't be exported in, each with the reason.
};

/// What an export wrote, for people and programs.
struct Manifest {
    std::vector<std::string> formats;
    bool premultiplied = false;
    std::vector<ManifestMessage> messages;
    std::vector<ManifestFile> range_files;  ///< of the whole range.
};

/// manifest.json: the messages with their files, sizes, checksums and failures.
std::string ManifestJson(const Manifest& manifest);

/// SHA256SUMS: a line for each file, as sha256sum --check reads them.
std::string ChecksumLines(const Manifest& manifest);

}  // namespace zel::exporter
