#pragma once

#include <filesystem>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "host/document/message_record.h"
#include "host/library/recording.h"

namespace zel::recorder {

/// Checksums of files, each remembered for a while and given again as long as its size and time of change stay the
/// same. May be asked from several threads.
class FileDigests {
  public:
    /// What is under a path now; without a checksum when there is no such file or it can't be read.
    /// @param path  absolute, this system's.
    library::SourceFile Of(const std::string& path);

  private:
    struct Known {
        std::filesystem::file_time_type changed;
        library::SourceFile file;
    };
    std::mutex m_mutex;
    std::map<std::string, Known> m_known;
};

/// The files that a message was made from: its own first, then the fonts that it names. One that wasn't found stands
/// without a checksum under the name that it should have.
/// @param font_directory  where fonts are looked for first, this system's.
std::vector<library::SourceFile> SourcesOf(const document::MessageRecord& message, const std::string& font_directory,
                                           FileDigests& digests);

/// Whether the files that something was made from are still the same, those that weren't there included.
bool AreUnchanged(const std::vector<library::SourceFile>& sources, const std::string& font_directory,
                  FileDigests& digests);

}  // namespace zel::recorder
