#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/library/library_access.h"
#include "host/library/library_entry.h"
#include "host/library/recording.h"

namespace zel::library {

/// The result of a merge: numbers of recordings.
struct MergeCount {
    /// Not present before.
    int added = 0;
    /// Present before, made from other files or options.
    int replaced = 0;
    /// Already present.
    int unchanged = 0;
};

/// Recorded messages in one SQLite file, with the files that they were made from, each once. Each call that writes is
/// one transaction, which is on the disk when the call returns; a program killed at any moment leaves a file that
/// opens. Several programs may use a file at once. An object is used by one thread at a time. All members throw
/// LibraryError.
class Library {
  public:
    /// @param patience  how long a call waits for another program that writes before it fails.
    /// @throws LibraryError also for a file of another version, or one that is not a library.
    Library(const std::filesystem::path& file, Access access,
            std::chrono::milliseconds patience = std::chrono::seconds(5));
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// Stores recordings, all or none of them. One with the disk and number of a stored recording replaces it
    /// completely.
    /// @return for each whether it replaced one.
    std::vector<bool> Record(std::span<const Recording> recordings);

    bool Has(const RecordingKey& key);
    std::optional<Recording> Find(const RecordingKey& key);
    std::optional<RecordingOrigin> Origin(const RecordingKey& key);
    /// The picture alone, as PNG; empty without one.
    std::string Picture(const RecordingKey& key);
    /// The document alone; empty without one.
    std::string Document(const RecordingKey& key);

    /// The contents of a file that recordings were made from; null if the library doesn't keep it, as in one that an
    /// earlier version has written.
    SharedFile KeptFile(const std::string& sha256);

    /// Names of the disks that have recordings, sorted.
    std::vector<std::string> Disks();
    /// Names of the disks that have a recording of this number, sorted.
    std::vector<std::string> DisksWith(int number);
    /// Recordings by disk and number. The time depends on the size of the part, not on that of the library.
    /// @param disk  empty: of all disks.
    std::vector<LibraryEntry> List(const std::optional<std::string>& disk = std::nullopt, const ListPart& part = {});
    /// Recordings whose text, field names or source contain every word, best match first. A word matches as the prefix
    /// of one. Operators of the full text search have no meaning in `words`; a text without words finds every
    /// recording, by disk and number.
    /// @param most  recordings that are returned, the best ones.
    std::vector<LibraryEntry> Search(const std::string& words, std::size_t most = ListPart().most);

    /// All recordings that a filter lets pass: by disk and number, or with words as Search orders them.
    LibraryTable Table(const TableFilter& filter);
    /// The entries of recordings in the given order. One that does not exist any more is left out.
    std::vector<LibraryEntry> Entries(std::span<const RecordingId> ids);

    /// @return false if there was no such recording.
    bool Remove(const RecordingKey& key);

    /// Copies what another library contains, in transactions of bounded size. A recording of the same disk and number
    /// is replaced unless it is the same.
    MergeCount Merge(const std::filesystem::path& other);

  private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace zel::library
