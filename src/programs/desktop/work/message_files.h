#pragma once

#include <string>
#include <vector>

#include "host/library/library.h"
#include "host/recorder/disk_names.h"

namespace zel::desktop {

/// How this program uses a file.
enum class FileKind { kMessage, kFont, kOther, kUnreadable };

/// @param path  in this system's form.
FileKind KindOf(const std::string& path);

using recorder::DiskNames;

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

/// Directories that belong together, in this system's form.
struct DiskDirectories {
    std::string messages;
    std::string fonts;
};

/// The directories of a disk, of another directory with messages, or of a message file.
DiskDirectories DirectoriesOf(const std::string& path);

/// Finds the messages of a disk (a directory that contains MESSAGES), of another directory, or of one file.
/// @throws LibraryError, std::filesystem::filesystem_error for an unreadable directory.
MessageSource FindMessages(const std::string& path, library::Library& library, DiskNames& names);

}  // namespace zel::desktop
