#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/document/message_record.h"
#include "host/library/recording.h"

namespace zel::recorder {

/// A source with the contents of its file.
struct ReadSource {
    library::SourceFile file;
    /// Null for a file without a checksum, and for one larger than library::kLargestKeptFile.
    library::SharedFile contents{};
};

/// Checksums and contents of files, cached while the size and the modification time of a file stay the same. May be
/// used from several threads.
class FileDigests {
  public:
    /// @param stop  asked while a file is read; once it returns true, files have no checksum. May be empty.
    explicit FileDigests(std::function<bool()> stop = {}) : m_stop(std::move(stop)) {}

    /// The file at a path; without a checksum when it is missing, can't be read, is larger than
    /// base::kLargestHashedFile or isn't a regular file. Size 0 when it is missing or isn't a regular file.
    /// @param path  absolute, this system's.
    library::SourceFile Of(const std::string& path);

    /// As Of, but a file that has another size than `size`, or one above `most`, is not read and has no checksum.
    library::SourceFile OfSize(const std::string& path, std::optional<std::uint64_t> size, std::uint64_t most);

    /// As OfSize without a size, and reads the contents for a library in the same pass.
    ReadSource Read(const std::string& path, std::uint64_t most);

  private:
    /// What the system says of a file, and what changes with its bytes.
    struct State {
        std::uint64_t size = 0;
        /// Seconds and nanoseconds.
        std::pair<std::int64_t, std::int64_t> changed;
        bool operator==(const State&) const = default;
    };
    struct Known {
        State state;
        std::string sha256;
        /// Null if only the checksum was asked for.
        library::SharedFile contents{};
        /// It was asked for again.
        bool is_shared = false;
    };
    /// Empty for a file that is missing or isn't a regular one.
    static std::optional<State> StateOf(const std::string& path);
    library::SourceFile Digested(const std::string& path, const State& state);
    /// What is known of a file in this state; marks it as shared.
    std::optional<Known> Find(const std::string& path, const State& state);
    void Keep(const std::string& path, Known known);
    void DropContents(bool also_shared) noexcept;

    const std::function<bool()> m_stop;
    std::mutex m_mutex;
    std::map<std::string, Known> m_known;
    /// Bytes of the contents in m_known.
    std::uint64_t m_contents = 0;
};

/// The files that a message was made from: its own first, then its fonts. A missing font has the path at which it is
/// expected, and no checksum; nor has a file beyond 128 MiB for all of them together.
/// @param font_directory  the first directory that is searched for fonts, this system's.
/// @param contents        receives the contents of the files, each once; null if they aren't wanted.
std::vector<library::SourceFile> SourcesOf(const document::MessageRecord& message, const std::string& font_directory,
                                           FileDigests& digests, std::vector<library::SharedFile>* contents = nullptr);

/// Whether these files are still the same, and missing ones still missing. A file without a checksum that isn't missing
/// counts as changed.
bool AreUnchanged(const std::vector<library::SourceFile>& sources, const std::string& font_directory,
                  FileDigests& digests);

}  // namespace zel::recorder
