#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zel::exporter {

/// Names of the two lists of an export.
inline constexpr const char* kManifestName = "manifest.json";
inline constexpr const char* kChecksumsName = "SHA256SUMS";

/// A file that was written.
struct ManifestFile {
    /// With "/" in the path of a file in a folder.
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

/// The result of an export, or of several into one directory.
struct Manifest {
    std::vector<std::string> formats;
    bool premultiplied = false;
    /// The size and the fit of the pictures' frame, such as "1920x1080 pillar"; empty for that of the video standard.
    std::optional<std::string> frame{};
    std::vector<ManifestMessage> messages;
    /// Files of the whole range.
    std::vector<ManifestFile> range_files;
};

/// manifest.json: the messages with their files, sizes, checksums and failures; described in docs/json.md.
std::string ManifestJson(const Manifest& manifest);

/// Reads what ManifestJson has written; empty for any other text. Names of files are checked: they
/// lead to no place outside the directory, and have no control character.
std::optional<Manifest> ParseManifest(std::string_view text);

/// SHA256SUMS: a line for each file, in the form that sha256sum --check reads.
std::string ChecksumLines(const Manifest& manifest);

}  // namespace zel::exporter
