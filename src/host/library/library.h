#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/library/recording.h"

namespace zel::library {

/// A library can't be opened, read or written; what() names the file and the reason in one line.
class LibraryError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// One line of a library's table of contents.
struct LibraryEntry {
    RecordingKey key;
    RecordingKind kind = RecordingKind::kMessage;
    std::string text;
    std::string source;  ///< path of the message's own file.
    std::string recorded_at;
    int warnings = 0;
};

/// What a recording was made from, to tell whether it is still true.
struct RecordingOrigin {
    std::string options;
    std::vector<SourceFile> sources;
    int warnings = 0;
};

/// What a merge did.
struct MergeCount {
    int added = 0;      ///< recordings that weren't there.
    int replaced = 0;   ///< recordings that were there, made from other files or options.
    int unchanged = 0;  ///< recordings that were there already.
};

/// Recorded messages in one SQLite file. What is recorded stays: each call that writes is one transaction, which is on
/// the disk when the call returns, and a program killed at any moment leaves a file that opens. Several programs may
/// use a file at once. An object is used by one thread at a time.
class Library {
  public:
    enum class Access {
        kRead,   ///< the file must be there.
        kWrite,  ///< the file is made if it is missing.
    };

    /// @param patience  how long a call waits for another program that writes, before it fails.
    /// @throws LibraryError also for a file of a newer version, or one that is no library.
    Library(const std::filesystem::path& file, Access access,
            std::chrono::milliseconds patience = std::chrono::seconds(5));
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// Records messages, all or none of them. One that is there under the same disk and number is replaced, and nothing
    /// of it is kept.
    void Record(std::span<const Recording> recordings);

    bool Has(const RecordingKey& key);
    std::optional<Recording> Find(const RecordingKey& key);
    std::optional<RecordingOrigin> Origin(const RecordingKey& key);
    /// The picture alone, as PNG; empty when there is none.
    std::string Picture(const RecordingKey& key);

    /// Names of the disks that messages are recorded of, sorted.
    std::vector<std::string> Disks();
    /// Recordings by disk and number. @param disk  without it, of all disks.
    std::vector<LibraryEntry> List(const std::optional<std::string>& disk = std::nullopt);
    /// Recordings whose text, field names or source hold every word, which may be the beginning of one; the best first.
    /// Any text is a question, also one with a full text search's own signs; one without words finds all.
    std::vector<LibraryEntry> Search(const std::string& words);

    bool Remove(const RecordingKey& key);

    /// Takes over what another library holds, in transactions of bounded size; a recording of the same disk and number
    /// gives way unless it is the same.
    MergeCount Merge(const std::filesystem::path& other);

  private:
    class Impl;
    std::unique_ptr<Impl> m_impl;
};

}  // namespace zel::library
