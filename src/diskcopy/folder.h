#pragma once

#include <string>
#include <vector>

#include <sys/stat.h>

#include "base/file_descriptor.h"

namespace zel::diskcopy {

/// Temporary name of a file that is being copied, on a disk without nameless files.
inline constexpr char kTemporaryName[] = "zelcopy.part";

/// The system's message for a value of errno.
std::string ErrorMessage(int error);

/// A path of this system with a name appended.
std::string Join(const std::string& path, const std::string& name);

/// Reads up to `size` bytes. @return the bytes read, 0 at the end, -1 with errno set.
long ReadSome(int descriptor, void* buffer, std::size_t size) noexcept;

/// An open folder. Names are looked up in the folder itself, so that a rename or a link made meanwhile can't lead out
/// of it.
class Folder {
  public:
    Folder() = default;
    /// Opens a folder by its path. Links are followed.
    static Folder Open(const std::string& path);
    /// Opens a folder in this one. @param follow  whether a link of that name is followed.
    Folder OpenIn(const std::string& name, bool follow) const;

    bool IsOpen() const noexcept { return m_descriptor.IsOpen(); }
    int Get() const noexcept { return m_descriptor.Get(); }

    /// Names in byte order, without "." and "..". @param error  receives 0, or the errno that ended the reading early.
    std::vector<std::string> Names(int& error) const;
    /// The name that equals `name`, or else one that differs only in the case of ASCII letters; empty without one.
    std::string Find(const std::string& name) const;
    /// The status of a name; a link isn't followed. @return false with errno set.
    bool Status(const std::string& name, struct stat& status) const noexcept;
    /// Opens a regular file for reading, without waiting for another program. Otherwise errno is set: ELOOP for a link,
    /// EINVAL for another kind of file.
    base::FileDescriptor OpenFile(const std::string& name) const noexcept;
    /// Whether both are the same folder.
    bool IsSame(const Folder& other) const noexcept;

  private:
    explicit Folder(int descriptor) noexcept : m_descriptor(descriptor) {}
    base::FileDescriptor m_descriptor;
};

}  // namespace zel::diskcopy
