#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "inspect/report.h"

namespace zel::inspect {

/// A font that messages name, and that an import of them does not find.
struct MissingFont {
    /// Directory of the disk, relative to the one that was inspected; empty for that one.
    std::string disk;
    int number = 0;
    /// The file of that number, which is no whole font; empty if there is none.
    std::string file;
    /// Number of messages that name it.
    std::uint64_t message_count = 0;
    /// The first kMostUsers of them.
    std::vector<std::string> messages;

    static constexpr std::size_t kMostUsers = 64;
};

/// "font 31 is missing; used by MESSAGES/.0012"; names as they may be printed.
std::string MissingFontText(const MissingFont& font);

/// A font that no import of the disk's messages reads.
struct UnusedFont {
    std::string disk;
    std::string file;
    enum class Reason : std::uint8_t {
        /// No message names its number.
        kNotNamed,
        /// Its name is none that an import looks for.
        kName,
        /// An import takes another file of its number.
        kOtherFile,
    };
    Reason reason{};
};

/// Which fonts the messages of a directory name. A disk in it is a folder with a folder MESSAGES or MACHINE, and has
/// its own fonts; all files outside of such folders belong together.
class FontUse {
  public:
    /// @param path  of the file, relative to the directory, with slashes.
    void Add(const FileReport& report, const std::string& path);

    /// Sorted by disk and number. A directory without any font that is no disk has its fonts elsewhere.
    std::vector<MissingFont> Missing() const;
    /// Sorted by disk and file. Only of disks with messages.
    std::vector<UnusedFont> Unused() const;

  private:
    /// The two names by which an import looks for a font, in this order.
    struct FontFiles {
        std::string padded, plain;
    };
    struct Disk {
        bool has_messages = false, has_folder = false;
        std::map<int, MissingFont> named;
        std::map<int, FontFiles> fonts;
        /// Files in place of a font that are none.
        std::map<int, std::string> others;
        std::set<std::string> other_names;
    };
    void AddFont(const std::string& path, bool whole, Disk& disk);

    std::map<std::string, Disk> m_disks;
};

}  // namespace zel::inspect
