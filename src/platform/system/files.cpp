#include "platform/system/files.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <string_view>

#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/system/errors.h"
#include "platform/system/path_lookup.h"

using namespace zel;

DWORD GetFileAttributesA(const char* path) noexcept {
    system::NativeName name;
    struct stat status {};
    DWORD error = name.Set(path);
    if (error == ERROR_SUCCESS && ::stat(name.Get(), &status) != 0) {
        error = system::ErrorFromErrno(errno);
        if (errno == ENOENT || errno == ENOTDIR) {
            error = name.MendCase();
            if (error == ERROR_SUCCESS && ::stat(name.Get(), &status) != 0) error = system::ErrorFromErrno(errno);
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

/// Copies a part of a path, cut to `room` - 1 characters.
void CopyPart(char* out, std::size_t room, std::string_view part) noexcept {
    if (out == nullptr) return;
    const std::size_t length = std::min(part.size(), room - 1);
    std::memcpy(out, part.data(), length);
    out[length] = '\0';
}

}  // namespace

namespace zel::crt {

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

}  // namespace zel::crt
