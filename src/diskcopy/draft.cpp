#include "diskcopy/draft.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace zel::diskcopy {

Draft::Draft(const Folder& folder) : m_folder(folder) {
    ::unlinkat(m_folder.Get(), kName, 0);
    m_file = Descriptor(::openat(m_folder.Get(), kName, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
    m_made = m_file.IsOpen();
}

Draft::~Draft() {
    const int error = errno;  // of the failure that is about to be told
    m_file.Close();
    if (m_made) ::unlinkat(m_folder.Get(), kName, 0);
    errno = error;
}

bool Draft::Write(const char* bytes, std::size_t size) noexcept {
    while (size > 0) {
        const ssize_t written = ::write(m_file.Get(), bytes, size);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return false;
        bytes += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

bool Draft::Commit(const std::string& name) noexcept {
    if (::fsync(m_file.Get()) != 0 || !m_file.Close()) return false;
    if (::renameat(m_folder.Get(), kName, m_folder.Get(), name.c_str()) != 0) return false;
    m_made = false;
    return true;
}

void Draft::TakeTimes(int descriptor) noexcept {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) return;
    const timespec times[] = {status.st_atim, status.st_mtim};
    ::futimens(m_file.Get(), times);
}

}  // namespace zel::diskcopy
