#include "host/whole_file.h"

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// An open file under the name that it has until it is whole; gone when it doesn't get there.
class Draft {
  public:
    explicit Draft(const std::string& name) : m_name(name) {
        constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
        m_file = ::open(m_name.c_str(), kFlags, 0666);
        if (m_file < 0 && errno == EEXIST) {
            // Of an earlier process of the same number, which was killed.
            ::unlink(m_name.c_str());
            m_file = ::open(m_name.c_str(), kFlags, 0666);
        }
        m_is_there = m_file >= 0;
    }
    ~Draft() {
        if (m_file >= 0) ::close(m_file);
        if (m_is_there) ::unlink(m_name.c_str());
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
        const int closed = ::close(m_file);
        m_file = -1;
        if (closed != 0 || ::rename(m_name.c_str(), file.c_str()) != 0) return false;
        m_is_there = false;
        return true;
    }

  private:
    std::string m_name;
    int m_file = -1;
    bool m_is_there = false;
};

}  // namespace

void WriteWholeFile(const std::filesystem::path& file, std::string_view bytes) {
    Draft draft(file.string() + ".part-" + std::to_string(::getpid()));
    if (draft.IsOpen() && draft.Write(bytes) && draft.TakePlaceOf(file.string())) return;
    const int error = errno;
    throw std::runtime_error(file.string() + ": could not be written: " + std::generic_category().message(error));
}
