#pragma once

#include <string>
#include <vector>

#include "host/library/library.h"

namespace zel::recorder {

/// Names the disks of a library, by the directories that contain their messages.
class DiskNames {
  public:
    /// The disk name under which a directory's messages are recorded: the present one if the library has messages of
    /// this directory, else an unused one that begins with the disk's or the directory's name.
    /// @param directory  absolute path in this system's form.
    /// @param usual      the name that a new disk gets unless it is used.
    /// @throws LibraryError
    std::string NameOf(library::Library& library, const std::string& directory, const std::string& usual);
    /// Likewise with the usual name of UsualDiskName.
    std::string NameOf(library::Library& library, const std::string& directory);

  private:
    struct NamedDirectory {
        std::string directory, name;
    };
    /// Includes disks without recordings.
    std::vector<NamedDirectory> m_named;
};

/// The usual name of the disk whose messages are in a directory: that of the directory, or of the one that contains it
/// if it is named MESSAGES.
/// @param directory  absolute path in this system's form.
std::string UsualDiskName(const std::string& directory);

}  // namespace zel::recorder
