#include "base/whole_file.h"

#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace zel::base {

namespace {

/// An open file that has no name until it is whole, so that a program that is killed leaves nothing behind; where the
/// file system doesn't know such files, one beside the file under a name of its own.
class Draft {
  public:
    explicit Draft(const std::filesystem::path& file) : m_name(file.string() + ".part-" + std::to_string(::getpid())) {
        const std::filesystem::path directory = file.has_parent_path() ? file.parent_path() : ".";
        m_file = ::open(directory.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0666);
        if (m_file >= 0 || (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)) return;
        constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
        m_file = ::open(m_name.c_str(), kFlags, 0666);
        if (m_file < 0 && errno == EEXIST) {
            // Of an earlier process of the same number, which was killed.
            ::unlink(m_name.c_str());
            m_file = ::open(m_name.c_str(), kFlags, 0666);
        }
        m_has_name = m_file >= 0;
    }
    ~Draft() {
        if (m_file >= 0) ::close(m_file);
        if (m_has_name) ::unlink(m_name.c_str());
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    bool IsOpen() const noexcept { return m_file >= 0; }

    bool Write(std::string_view bytes) noexcept {
        while (!bytes.empty()) {
            const ssize_t written = ::write(m_file, bytes.data(), bytes.size());
            if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
            if (written == 0) errno = ENOSPC;
            if (written == 0 || (written < 0 && errno != EINTR)) return false;
        }
        return true;
    }

    bool TakePlaceOf(const std::string& file) noexcept {
        if (::fsync(m_file) != 0) return false;
        if (!m_has_name) {
            if (Link(file)) return true;
            if (errno != EEXIST) return false;
            ::unlink(m_name.c_str());  // of an earlier process of the same number, which was killed
            if (!Link(m_name)) return false;
            m_has_name = true;
        }
        if (::rename(m_name.c_str(), file.c_str()) != 0) return false;
        m_has_name = false;
        return true;
    }

  private:
    /// Gives the nameless file a name that nothing has.
    bool Link(const std::string& name) noexcept {
        char self[64];
        std::snprintf(self, sizeof self, "/proc/self/fd/%d", m_file);
        return ::linkat(AT_FDCWD, self, AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }

    std::string m_name;
    int m_file = -1;
    bool m_has_name = false;
};

}  // namespace

void WriteWholeFile(const std::filesystem::path& file, std::string_view bytes) {
    Draft draft(file);
    if (draft.IsOpen() && draft.Write(bytes) && draft.TakePlaceOf(file.string())) return;
    const int error = errno;
    throw std::runtime_error(file.string() + ": could not be written: " + std::generic_category().message(error));
}

}  // namespace zel::base
