#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/ftp/part_file.h"

namespace zel::ftp {

/// Identifies the remote file whose first bytes a part contains.
struct PartKey {
    /// Server and directory.
    std::string source;
    std::string name;
    /// In bytes.
    std::uint64_t size = 0;
    std::string modified;
};

/// The local directory of a fetch. It is held open, every file is opened by name within it, and no link is followed. A
/// name that could lead out of the directory is never opened: it is kOther to TypeOf and an error elsewhere.
class SafeDirectory {
  public:
    enum class Type { kMissing, kFile, kOther };

    /// Opens a directory whose path comes from the user and may contain links. Missing directories are created.
    /// @throws LocalError if it cannot be created or opened.
    explicit SafeDirectory(const std::filesystem::path& path);
    /// Opens a subdirectory, ignoring the case of its name; creates it if it is missing.
    /// @throws LocalError for a link and for anything else that is not a directory.
    SafeDirectory Below(const std::string& name) const;

    /// What has a name; a link is kOther, whatever its target.
    Type TypeOf(const std::string& name) const;
    /// Reads a regular file; nothing if it is not one or is larger than `limit` bytes.
    std::optional<std::vector<std::uint8_t>> Read(const std::string& name, std::uint64_t limit) const;

    /// Opens the part of a remote file and removes parts of the same name with another key.
    /// @param key  without it the part starts empty and no later fetch resumes it.
    /// @throws LocalError, also when another fetch is writing the part.
    std::unique_ptr<PartFile> OpenPart(const std::string& name, const std::optional<PartKey>& key) const;

  private:
    explicit SafeDirectory(base::FileDescriptor directory) : m_directory(std::move(directory)) {}
    std::vector<std::string> Names() const;

    base::FileDescriptor m_directory;
};

}  // namespace zel::ftp
