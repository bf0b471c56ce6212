#include "platform/system/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
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

constexpr int kEndOfFile = -1;
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
        while (count < size) {
            int c = Peek();
            if (c == kEndOfFile || c == kEndOfText) break;
            ++m_next;
            if (c == '\r' && Peek() == '\n') {
                c = '\n';
                ++m_next;
            }
            buffer[count++] = static_cast<char>(c);
        }
        return count;
    }

  private:
    int Peek() noexcept {
        if (m_next == m_filled) {
            m_next = 0;
            m_filled = ReadFully(m_descriptor, m_bytes.data(), m_bytes.size());
            if (m_filled == 0) return kEndOfFile;
        }
        return m_bytes[m_next];
    }

    int m_descriptor;
    std::size_t m_next = 0;
    std::size_t m_filled = 0;
    std::array<unsigned char, 4096> m_bytes{};
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

int _heapmin() noexcept {
    ::malloc_trim(0);
    return 0;
}

}  // namespace crt
