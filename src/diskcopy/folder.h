#pragma once

#include <string>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace zel::diskcopy {

/// Descriptors of folders and files. Names are looked up in an open folder, so that nothing that is renamed or linked
/// meanwhile leads out of it. Private to the platform.

class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) noexcept : m_descriptor(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~Descriptor() { Close(); }

    bool IsOpen() const noexcept { return m_descriptor >= 0; }
    int Get() const noexcept { return m_descriptor; }
    /// @return false, with errno set, when the system reports that what was written is lost.
    bool Close() noexcept;

  private:
    int m_descriptor = -1;
};

/// The system's words for a value of errno.
std::string ErrorWords(int error);

/// A path of this system with a name put behind it.
std::string Join(const std::string& path, const std::string& name);

/// Reads up to `size` bytes. @return the bytes read, 0 at the end, -1 with errno set.
long ReadSome(int descriptor, void* buffer, std::size_t size) noexcept;

class Folder {
  public:
    Folder() = default;
    /// Opens a folder by its path; the user's own links are followed.
    static Folder Open(const std::string& path);
    /// Opens a folder in this one. @param follow  whether a link of that name is followed.
    Folder OpenIn(const std::string& name, bool follow) const;

    bool IsOpen() const noexcept { return m_descriptor.IsOpen(); }
    int Get() const noexcept { return m_descriptor.Get(); }

    /// Names in byte order, without "." and "..". @param error  0, or the errno that ended the reading early.
    std::vector<std::string> Names(int& error) const;
    /// The name that equals `name` but for the case of ASCII letters, itself if it is there; empty for none.
    std::string Find(const std::string& name) const;
    /// What a name stands for, a link for itself. @return false with errno set.
    bool Status(const std::string& name, struct stat& status) const noexcept;
    /// Opens a plain file for reading, never a link and nothing that one would wait for; errno is set otherwise: ELOOP
    /// for a link, EINVAL for what is no plain file.
    Descriptor OpenFile(const std::string& name) const noexcept;
    /// Whether both are one and the same folder.
    bool IsSame(const Folder& other) const noexcept;

  private:
    explicit Folder(int descriptor) noexcept : m_descriptor(descriptor) {}
    Descriptor m_descriptor;
};

}  // namespace zel::diskcopy
