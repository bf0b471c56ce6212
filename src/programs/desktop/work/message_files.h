#pragma once

#include <string>
#include <vector>

#include "host/library/library.h"

namespace zel::desktop {

/// How this program uses a file.
enum class FileKind { kMessage, kFont, kOther, kUnreadable };

/// @param path  in this system's form.
FileKind KindOf(const std::string& path);

/// Names the disks of a library, by the directories that contain their messages.
class DiskNames {
  public:
    /// The disk name under which a directory's messages are recorded: the present one if the library has messages of
    /// this directory, else an unused one that begins with the disk's or the directory's name.
    /// @param directory  absolute path in this system's form.
    /// @throws LibraryError
    std::string NameOf(library::Library& library, const std::string& directory);

  private:
    struct NamedDirectory {
        std::string directory, name;
    };
    /// Includes disks without recordings.
    std::vector<NamedDirectory> m_named;
};

/// The key of a message file's recording: the number after the dot of its name. A file without a valid number is number
/// 0 of a disk of its own.
/// @param disk  of its directory.
/// @param name  of the file, without its directory.
library::RecordingKey KeyOf(const std::string& disk, const std::string& name);

/// A message file and the key of its recording.
struct MessageFile {
    std::string path;
    library::RecordingKey key;
};

/// Messages of one directory. Paths are absolute and in this system's form.
struct MessageSource {
    /// The disk, directory or file that the user chose.
    std::string path;
    /// Contains the messages.
    std::string directory;
    std::string font_directory;
    /// By name; may be empty.
    std::vector<MessageFile> messages;
};

/// Finds the messages of a disk (a directory that contains MESSAGES), of another directory, or of one file.
/// @throws LibraryError, std::filesystem::filesystem_error for an unreadable directory.
MessageSource FindMessages(const std::string& path, library::Library& library, DiskNames& names);

}  // namespace zel::desktop
