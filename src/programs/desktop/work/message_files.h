#pragma once

#include <string>
#include <vector>

#include "host/library/library.h"

namespace zel::desktop {

/// What a file is to this program.
enum class FileKind { kMessage, kFont, kOther, kUnreadable };

/// @param path  this system's.
FileKind KindOf(const std::string& path);

/// Tells the disks of a library apart by the directories that their messages lie in.
class DiskNames {
  public:
    /// The name under which a directory's messages are recorded: the one that the library holds messages of this
    /// directory under, else a fresh one, made of the disk's or the directory's own name.
    /// @param directory  absolute, this system's.
    /// @throws LibraryError
    std::string NameOf(library::Library& library, const std::string& directory);

  private:
    struct Given {
        std::string directory, name;
    };
    std::vector<Given> m_given;  // also those of which nothing is recorded yet
};

/// What a message file is recorded under: the number behind the dot of its name. A file without one, or with one that
/// can't be recorded, has number 0 of a disk of its own.
/// @param disk  of its directory. @param name  of the file, without its directory.
library::RecordingKey KeyOf(const std::string& disk, const std::string& name);

/// One message file, and what it is recorded under.
struct MessageFile {
    std::string path;  ///< absolute, this system's.
    library::RecordingKey key;
};

/// Messages of one directory. Paths are absolute and this system's.
struct MessageSource {
    std::string place;      ///< what the user named: a disk, a directory or a file.
    std::string directory;  ///< that the messages lie in.
    std::string font_directory;
    std::vector<MessageFile> messages;  ///< by name; none when there is no message.
};

/// Finds the messages of a disk (a directory with MESSAGES in it), of any other directory, or the one of a file.
/// @throws LibraryError, std::filesystem::filesystem_error for a directory that can't be read.
MessageSource FindMessages(const std::string& place, library::Library& library, DiskNames& names);

}  // namespace zel::desktop
