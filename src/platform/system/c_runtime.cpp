#include "platform/system/c_runtime.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstring>
#include <string_view>

#include <malloc.h>

namespace zel::crt {

namespace {

/// Copies a part of a path, cut to `room` - 1 characters.
void CopyPart(char* out, std::size_t room, std::string_view part) noexcept {
    if (out == nullptr) return;
    const std::size_t length = std::min(part.size(), room - 1);
    std::memcpy(out, part.data(), length);
    out[length] = '\0';
}

}  // namespace

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

// A batch calls this after each font and needs the same pages for the next one. So memory is returned only when none
// has been returned for a while.
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
