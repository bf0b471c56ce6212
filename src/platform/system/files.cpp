#include "platform/system/files.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include <fcntl.h>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/system/errors.h"
#include "platform/system/path_lookup.h"

DWORD GetFileAttributesA(const char* path) noexcept {
    NativeName name;
    struct stat status {};
    DWORD error = name.Set(path);
    if (error == ERROR_SUCCESS && ::stat(name.Get(), &status) != 0) {
        error = ErrorFromErrno(errno);
        if (errno == ENOENT || errno == ENOTDIR) {
            error = name.MendCase();
            if (error == ERROR_SUCCESS && ::stat(name.Get(), &status) != 0) error = ErrorFromErrno(errno);
        }
        if (error >= ERROR_NOT_DOS_DISK)
            error = error == ERROR_FILENAME_EXCED_RANGE ? ERROR_PATH_NOT_FOUND : ERROR_NOT_READY;
    } else if (error == ERROR_FILENAME_EXCED_RANGE) {
        error = ERROR_PATH_NOT_FOUND;
    }
    if (error != ERROR_SUCCESS) {
        SetLastError(error);
        return INVALID_FILE_ATTRIBUTES;
    }
    return S_ISDIR(status.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_NORMAL;
}

namespace {

constexpr int kEndOfText = 26;

/// A file read as text: its bytes, with line ends turned, up to the byte that ends a text.
class TextFile {
  public:
    explicit TextFile(int descriptor) noexcept : m_descriptor(descriptor) {}
    ~TextFile() { ::close(m_descriptor); }

    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;

    std::size_t Read(char* buffer, std::size_t size) noexcept {
        std::size_t count = 0;
        while (count < size && Fill()) count += Turn(buffer + count, size - count);
        return count;
    }

  private:
    // Copies what is read already, up to `size` characters: stretches without a carriage return whole, and of a
    // carriage return and a line feed only the line feed.
    std::size_t Turn(char* buffer, std::size_t size) noexcept {
        const char* const next = m_bytes.data() + m_next;
        const std::size_t there = std::min(size, m_filled - m_next);
        const auto* const turn = static_cast<const char*>(std::memchr(next, '\r', there));
        const std::size_t plain = turn != nullptr ? static_cast<std::size_t>(turn - next) : there;
        std::memcpy(buffer, next, plain);
        m_next += plain;
        if (turn == nullptr) return plain;
        ++m_next;
        if (Fill() && m_bytes[m_next] == '\n') return plain;  // which comes next
        buffer[plain] = '\r';
        return plain + 1;
    }

    // Makes sure that there is a byte to come; false at the end of the text.
    bool Fill() noexcept {
        if (m_next < m_filled) return true;
        if (m_ended) return false;
        m_next = 0;
        m_filled = ReadFully(m_descriptor, m_bytes.data(), m_bytes.size(), m_offset);
        m_offset += m_filled;
        const auto* const end = static_cast<const char*>(std::memchr(m_bytes.data(), kEndOfText, m_filled));
        m_ended = end != nullptr || m_filled < m_bytes.size();
        if (end != nullptr) m_filled = static_cast<std::size_t>(end - m_bytes.data());
        return m_filled > 0;
    }

    int m_descriptor;
    bool m_ended = false;  // nothing follows what is read already
    std::size_t m_next = 0;
    std::size_t m_filled = 0;
    ULONGLONG m_offset = 0;
    std::array<char, 16384> m_bytes;  // m_filled of them are set
};

ssize_t ReadText(void* file, char* buffer, std::size_t size) {
    return static_cast<ssize_t>(static_cast<TextFile*>(file)->Read(buffer, size));
}

int CloseText(void* file) {
    delete static_cast<TextFile*>(file);
    return 0;
}

std::FILE* OpenText(int descriptor) noexcept {
    std::unique_ptr<TextFile> file(new (std::nothrow) TextFile(descriptor));
    if (file == nullptr) {
        ::close(descriptor);
        return nullptr;
    }
    std::FILE* const stream = ::fopencookie(file.get(), "r", {&ReadText, nullptr, nullptr, &CloseText});
    if (stream != nullptr) static_cast<void>(file.release());
    return stream;
}

std::FILE* OpenBinary(int descriptor) noexcept {
    std::FILE* const stream = ::fdopen(descriptor, "rb");
    if (stream == nullptr) ::close(descriptor);
    return stream;
}

/// Copies a part of a path, cut to `room` - 1 characters.
void CopyPart(char* out, std::size_t room, std::string_view part) noexcept {
    if (out == nullptr) return;
    const std::size_t length = std::min(part.size(), room - 1);
    std::memcpy(out, part.data(), length);
    out[length] = '\0';
}

}  // namespace

namespace crt {

std::FILE* fopen(const char* path, const char* mode) noexcept {
    const std::string_view how = mode != nullptr ? mode : "";
    const bool text = how == "r" || how == "rt";
    if (!text && how != "rb") {
        SetLastError(ERROR_INVALID_PARAMETER);
        errno = EINVAL;
        return nullptr;
    }
    const int descriptor = OpenForReading(path);
    if (descriptor < 0) return nullptr;
    std::FILE* const stream = text ? OpenText(descriptor) : OpenBinary(descriptor);
    if (stream == nullptr) SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return stream;
}

void _splitpath(const char* path, char* drive, char* dir, char* fname, char* ext) noexcept {
    std::string_view rest = path != nullptr ? path : "";
    const std::size_t driveLength = rest.size() >= 2 && rest[1] == ':' ? 2 : 0;
    CopyPart(drive, _MAX_DRIVE, rest.substr(0, driveLength));
    rest.remove_prefix(driveLength);

    const std::size_t separator = rest.find_last_of("\\/");
    const std::size_t dirLength = separator == std::string_view::npos ? 0 : separator + 1;
    CopyPart(dir, _MAX_DIR, rest.substr(0, dirLength));
    rest.remove_prefix(dirLength);

    const std::size_t dot = std::min(rest.rfind('.'), rest.size());
    CopyPart(fname, _MAX_FNAME, rest.substr(0, dot));
    CopyPart(ext, _MAX_EXT, rest.substr(dot));
}

// A batch asks for this with every font that it is done with, and needs the same pages for the next one; so memory goes
// back when nothing has gone back for a while.
int _heapmin() noexcept {
    using Clock = std::chrono::steady_clock;
    constexpr auto kPause = std::chrono::milliseconds(200);
    static std::atomic<Clock::rep> next{0};
    const Clock::rep now = Clock::now().time_since_epoch().count();
    Clock::rep due = next.load(std::memory_order_relaxed);
    if (now < due) return 0;
    if (next.compare_exchange_strong(due, now + std::chrono::duration_cast<Clock::duration>(kPause).count()))
        ::malloc_trim(0);
    return 0;
}

}  // namespace crt
