#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zel::exporter {

/// A file that was written.
struct ManifestFile {
    std::string name;
    /// In bytes.
    std::uint64_t size = 0;
    std::string sha256;
};

/// An exported message with its files.
struct ManifestMessage {
    std::string disk;
    int number = 0;
    std::string title;
    std::vector<ManifestFile> files;
    /// Formats in which it couldn't be exported, each with the reason.
    std::vector<std::string> failures;
};

/// The result of an export.
struct Manifest {
    std::vector<std::string> formats;
    bool premultiplied = false;
    std::vector<ManifestMessage> messages;
    /// Files of the whole range.
    std::vector<ManifestFile> range_files;
};

/// manifest.json: the messages with their files, sizes, checksums and failures.
std::string ManifestJson(const Manifest& manifest);

/// SHA256SUMS: a line for each file, in the form that sha256sum --check reads.
std::string ChecksumLines(const Manifest& manifest);

}  // namespace zel::exporter
