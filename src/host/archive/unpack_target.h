#pragma once

#include <ctime>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "base/file_descriptor.h"
#include "host/archive/entry_name.h"

namespace zel::archive {

/// The directory that receives the files of an archive. Its names differ by more than case, so that none can take the
/// place of another, whatever file system the archive is made for.
class UnpackTarget {
  public:
    /// @param root  empty.
    explicit UnpackTarget(std::filesystem::path root) : m_root(std::move(root)) {}

    /// Makes a directory and those above it.
    /// @return why the name is refused; empty if it isn't.
    std::string MakeDirectory(const EntryName& name);

    /// Begins a file, and makes its directories.
    /// @param fault  receives the reason when the result isn't open.
    base::FileDescriptor MakeFile(const EntryName& name, std::string& fault);

    /// Ends a file whose contents are complete.
    /// @param size      in bytes; zeros follow what has been written.
    /// @param modified  its modification time.
    /// @return the reason of a failure.
    static std::string FinishFile(const base::FileDescriptor& file, std::uint64_t size,
                                  const std::optional<std::timespec>& modified);

    /// Removes a file whose contents are incomplete. Its name stays taken.
    void RemoveFile(const EntryName& name) const;

  private:
    enum class Kind { kDirectory, kFile };
    struct Taken {
        std::string path;
        Kind kind;
    };
    /// Takes a path for a directory or a file. @return as MakeDirectory.
    std::string Take(const std::string& path, Kind kind, bool& is_new);
    std::string MakeDirectories(const EntryName& name, std::size_t count);

    const std::filesystem::path m_root;
    /// By the path in lower case.
    std::map<std::string, Taken> m_taken;
};

}  // namespace zel::archive
