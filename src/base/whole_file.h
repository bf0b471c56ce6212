#pragma once

#include <array>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include <sys/types.h>

#include "base/file_descriptor.h"

namespace zel::base {

/// A file that is being written. It has no name until Commit, so that a killed program leaves nothing behind; on a file
/// system without nameless files it has a temporary name beside the final one. Without Commit it is removed. A file
/// that it replaces passes on its permissions, its owner and its group, as far as the system allows.
class UnfinishedFile {
  public:
    /// Begins a file in the directory of its path. A failure is visible in IsOpen, with errno set. Its temporary name,
    /// if it needs one, is one that no file has, and doesn't depend on the file's name, which may have the greatest
    /// length.
    explicit UnfinishedFile(const std::filesystem::path& file);

    /// Begins a file in an open directory.
    /// @param directory       must outlive this object.
    /// @param name            of the finished file.
    /// @param temporary_name  for a file system without nameless files. A file of that name, from a killed program, is
    ///                        removed first.
    UnfinishedFile(int directory, std::string name, std::string temporary_name);

    ~UnfinishedFile();
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    /// What Commit does with a file that already has the name.
    enum class Existing {
        /// A link is replaced, not followed.
        kReplace,
        /// Commit fails with EEXIST.
        kKeep,
    };

    /// Each of these functions returns false with errno set.
    bool IsOpen() const noexcept { return m_file.IsOpen(); }
    bool Write(std::string_view bytes) noexcept { return WriteFully(m_file.Get(), bytes); }
    /// Waits until the bytes are on the disk, so that the file is complete even if the machine stops.
    bool Sync() noexcept;
    /// Gives the file its name, and waits until the name is on the disk if the bytes are. Called once, last.
    bool Commit(Existing existing = Existing::kReplace) noexcept;

    /// The open file, for its times and for writing by other means.
    int Descriptor() const noexcept { return m_file.Get(); }

  private:
    friend void RemoveUnfinishedFiles() noexcept;

    void Open() noexcept;
    bool OpenWithTemporaryName(mode_t mode) noexcept;
    bool Link(const char* name) const noexcept;
    bool TakeName(Existing existing) noexcept;
    void KeepAccess() const noexcept;
    template <class Attempt>
    bool WithTemporaryName(Attempt attempt) noexcept;
    const char* TemporaryName() const noexcept;
    /// The caller has locked the list of such files.
    void SetHasTemporaryName(bool has_name) noexcept;

    /// Of a file that was begun by its path.
    FileDescriptor m_own_directory;
    int m_directory;
    std::string m_name;
    /// The one that the caller wants; may be empty.
    std::string m_requested_name;
    /// Otherwise the one that was free. No string, since it is found in functions that must not throw.
    std::array<char, 64> m_free_name{};
    FileDescriptor m_file;
    bool m_has_temporary_name = false;
    /// The next one that has a temporary name.
    UnfinishedFile* m_next_named = nullptr;
    bool m_synced = false;
};

/// Removes the temporary names of all unfinished files, before a program ends without their destructors. Other threads
/// that write such files stop for good. Not to be called from a signal handler.
void RemoveUnfinishedFiles() noexcept;

/// Whether a file must be complete even if the machine stops, which costs a wait for the disk.
enum class Durability { kSynced, kUnsynced };

/// Writes a file that appears whole or not at all. A link of that name is replaced.
/// @return the reason of a failure; a file that was there before is then unchanged.
std::error_code TryWriteWholeFile(const std::filesystem::path& file, std::string_view bytes,
                                  Durability durability = Durability::kSynced) noexcept;

/// Makes the directories that lead to a file, as far as they are missing. They are on the disk when the call returns.
/// @return the reason of a failure; no error if something that isn't a directory has the place of the last one.
std::error_code MakeDirectoriesTo(const std::filesystem::path& file) noexcept;

/// Writes likewise, synced. @throws std::runtime_error with the file's name and the reason.
void WriteWholeFile(const std::filesystem::path& file, std::string_view bytes);

/// Gives a file of a directory a new name, unless another file has it already.
/// @return false with errno set, EEXIST when the name is taken.
bool RenameToNewName(int directory, const char* from, const char* to) noexcept;

}  // namespace zel::base
