#include "faults/failing.h"

#include <cerrno>
#include <cstdarg>
#include <new>

#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

using namespace zel;

// A sanitizer has an allocator of its own, which must stay: then only the module's own calls are taken over (by the
// linker, see CMakeLists.txt), and those of operator new. Else the C library's names are, for all that the program
// loads.
#if defined(ZELTRANS_SANITIZED)
#define REAL(name) __real_##name
#define OURS(name) __wrap_##name
#else
#define REAL(name) __libc_##name
#define OURS(name) name
#endif

extern "C" {
void* REAL(malloc)(std::size_t size);
void* REAL(calloc)(std::size_t count, std::size_t size);
void* REAL(realloc)(void* block, std::size_t size);
void REAL(free)(void* block);
void* OURS(malloc)(std::size_t size);
void* OURS(calloc)(std::size_t count, std::size_t size);
void* OURS(realloc)(void* block, std::size_t size);
void OURS(free)(void* block);
}

namespace zel::failing {

namespace {

// Plain data: allocation begins before the program does.
bool g_armed = false;
int g_paused = 0;
Call g_call{};
std::uint64_t g_nth = 0, g_seen = 0;
bool g_from_then_on = false;
std::int64_t g_live = 0;
std::size_t g_largest = 0;

bool Fails(Call call) noexcept {
    if (!g_armed || g_paused != 0 || call != g_call) return false;
    const std::uint64_t number = g_seen++;
    return number == g_nth || (g_from_then_on && number > g_nth);
}

void* Taken(void* block, std::size_t size) noexcept {
    if (block != nullptr) ++g_live;
    if (size > g_largest) g_largest = size;
    return block;
}

}  // namespace

Armed::Armed(Call call, std::uint64_t nth, bool from_then_on) noexcept {
    g_call = call;
    g_nth = nth;
    g_from_then_on = from_then_on;
    g_seen = 0;
    g_armed = true;
}

Armed::~Armed() {
    g_armed = false;
}

bool Armed::Fired() const noexcept {
    return g_seen > g_nth;
}

std::uint64_t Armed::Count() const noexcept {
    return g_seen;
}

Paused::Paused() noexcept {
    ++g_paused;
}

Paused::~Paused() {
    --g_paused;
}

std::int64_t LiveBlocks() noexcept {
    return g_live;
}

std::size_t TakeLargestAllocation() noexcept {
    const std::size_t largest = g_largest;
    g_largest = 0;
    return largest;
}

}  // namespace zel::failing

using failing::Call;
using failing::Fails;

void* OURS(malloc)(std::size_t size) {
    if (Fails(Call::kAllocation)) return errno = ENOMEM, nullptr;
    return failing::Taken(REAL(malloc)(size), size);
}

void* OURS(calloc)(std::size_t count, std::size_t size) {
    if (Fails(Call::kAllocation)) return errno = ENOMEM, nullptr;
    return failing::Taken(REAL(calloc)(count, size), count * size);
}

void* OURS(realloc)(void* block, std::size_t size) {
    if (Fails(Call::kAllocation)) return errno = ENOMEM, nullptr;
    void* const moved = REAL(realloc)(block, size);
    return block == nullptr ? failing::Taken(moved, size) : moved;
}

void OURS(free)(void* block) {
    if (block != nullptr) --failing::g_live;
    REAL(free)(block);
}

void* operator new(std::size_t size) {
    if (void* const block = OURS(malloc)(size != 0 ? size : 1)) return block;
    throw std::bad_alloc();
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return OURS(malloc)(size != 0 ? size : 1);
}
void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return operator new(size, std::nothrow);
}
void operator delete(void* block) noexcept {
    OURS(free)(block);
}
void operator delete(void* block, std::size_t) noexcept {
    OURS(free)(block);
}
void operator delete[](void* block) noexcept {
    OURS(free)(block);
}
void operator delete[](void* block, std::size_t) noexcept {
    OURS(free)(block);
}

extern "C" int open(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const int mode = (flags & O_CREAT) != 0 ? va_arg(rest, int) : 0;
    va_end(rest);
    if (Fails(Call::kOpen)) return errno = EIO, -1;
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

extern "C" ssize_t read(int descriptor, void* buffer, std::size_t count) {
    if (Fails(Call::kRead)) return errno = EIO, -1;
    return ::syscall(SYS_read, descriptor, buffer, count);
}

extern "C" ssize_t pread(int descriptor, void* buffer, std::size_t count, off_t offset) {
    if (Fails(Call::kRead)) return errno = EIO, -1;
    const iovec whole{buffer, count};
    return ::preadv(descriptor, &whole, 1, offset);
}
