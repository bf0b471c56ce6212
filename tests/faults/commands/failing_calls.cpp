// A library to be preloaded. It runs the program's `main` once for each request, in a process of its own, and lets one
// call of the system fail. Only what the program and its libraries call is counted: the C library's inner calls, such
// as those of stdio, go elsewhere.
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <unistd.h>

#include "faults/commands/protocol.h"

using zel::failing::Kind;

namespace {

// Plain data: allocation begins before the program does.
bool g_armed = false;
zel::failing::Request g_request{};
/// In memory that a run shares with the process that waits for it.
std::atomic<std::uint32_t>* g_calls = nullptr;

bool Fails(Kind kind, int error) {
    if (!g_armed || kind != g_request.kind) return false;
    const std::uint32_t number = g_calls->fetch_add(1);
    const bool fails = number == g_request.nth || (g_request.from_then_on != 0 && number > g_request.nth);
    if (fails) errno = error;
    return fails;
}

template <class Function>
Function Real(const char* name) {
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

using Main = int (*)(int, char**, char**);
Main g_main = nullptr;

bool Transfer(ssize_t count, std::size_t size) {
    return count == static_cast<ssize_t>(size);
}

/// In the process that waits: forks for each request. Returns in the process of a run.
void AnswerRequests(int socket) {
    while (Transfer(::syscall(SYS_read, socket, &g_request, sizeof g_request), sizeof g_request)) {
        *g_calls = 0;
        const pid_t child = ::fork();
        if (child == 0) {
            ::close(socket);
            ::alarm(zel::failing::kMostSeconds);
            g_armed = true;
            return;
        }
        zel::failing::Reply reply{};
        ::waitpid(child, &reply.status, 0);
        reply.calls = *g_calls;
        if (!Transfer(::syscall(SYS_write, socket, &reply, sizeof reply), sizeof reply)) break;
    }
    ::_exit(0);
}

int MainForEachRequest(int argc, char** argv, char** environment) {
    if (const char* const socket = std::getenv(zel::failing::kSocketVariable)) {
        void* const shared =
            ::mmap(nullptr, sizeof *g_calls, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        g_calls = new (shared) std::atomic<std::uint32_t>(0);
        if (const char* const library = std::getenv(zel::failing::kLibraryVariable)) ::dlopen(library, RTLD_LAZY);
        ::unsetenv("LD_PRELOAD");
        AnswerRequests(std::atoi(socket));
    }
    return g_main(argc, argv, environment);
}

}  // namespace

extern "C" {

int __libc_start_main(Main main, int argc, char** argv, void (*init)(), void (*fini)(), void (*rtld_fini)(),
                      void* stack) {
    using Start = int (*)(Main, int, char**, void (*)(), void (*)(), void (*)(), void*);
    g_main = main;
    return Real<Start>("__libc_start_main")(&MainForEachRequest, argc, argv, init, fini, rtld_fini, stack);
}

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) {
    return Fails(Kind::kMemory, ENOMEM) ? nullptr : __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
    return Fails(Kind::kMemory, ENOMEM) ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* block, std::size_t size) {
    return Fails(Kind::kMemory, ENOMEM) ? nullptr : __libc_realloc(block, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) {
    return Fails(Kind::kMemory, ENOMEM) ? nullptr : __libc_memalign(alignment, size);
}
int posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    if (Fails(Kind::kMemory, ENOMEM)) return ENOMEM;
    *block = __libc_memalign(alignment, size);
    return *block != nullptr ? 0 : ENOMEM;
}

// The calls with a mode hand on a fourth argument, which isn't read when there is none.
int openat(int directory, const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    if (g_armed && g_request.only_names != 0 && (flags & O_TMPFILE) == O_TMPFILE) return errno = EOPNOTSUPP, -1;
    if (Fails(Kind::kOpen, EMFILE)) return -1;
    return static_cast<int>(::syscall(SYS_openat, directory, path, flags, mode));
}
int open(const char* path, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    const mode_t mode = va_arg(rest, mode_t);
    va_end(rest);
    return openat(AT_FDCWD, path, flags, mode);
}
int open64(const char* path, int flags, ...) __attribute__((alias("open")));
int openat64(int directory, const char* path, int flags, ...) __attribute__((alias("openat")));
FILE* fopen64(const char* path, const char* mode) {
    static const auto real = Real<FILE* (*)(const char*, const char*)>("fopen64");
    return Fails(Kind::kOpen, EMFILE) ? nullptr : real(path, mode);
}
FILE* fopen(const char* path, const char* mode) __attribute__((alias("fopen64")));
DIR* opendir(const char* path) {
    static const auto real = Real<DIR* (*)(const char*)>("opendir");
    return Fails(Kind::kOpen, EMFILE) ? nullptr : real(path);
}

ssize_t read(int descriptor, void* buffer, std::size_t count) {
    return Fails(Kind::kRead, EIO) ? -1 : ::syscall(SYS_read, descriptor, buffer, count);
}
ssize_t pread64(int descriptor, void* buffer, std::size_t count, off64_t offset) {
    return Fails(Kind::kRead, EIO) ? -1 : ::syscall(SYS_pread64, descriptor, buffer, count, offset);
}
ssize_t pread(int descriptor, void* buffer, std::size_t count, off_t offset) __attribute__((alias("pread64")));

// Standard error stays: nobody could read there why a write failed.
ssize_t write(int descriptor, const void* bytes, std::size_t count) {
    const bool fails = descriptor != STDERR_FILENO && Fails(Kind::kWrite, ENOSPC);
    return fails ? -1 : ::syscall(SYS_write, descriptor, bytes, count);
}
ssize_t writev(int descriptor, const iovec* parts, int count) {
    const bool fails = descriptor != STDERR_FILENO && Fails(Kind::kWrite, ENOSPC);
    return fails ? -1 : ::syscall(SYS_writev, descriptor, parts, count);
}
ssize_t pwrite64(int descriptor, const void* bytes, std::size_t count, off64_t offset) {
    return Fails(Kind::kWrite, ENOSPC) ? -1 : ::syscall(SYS_pwrite64, descriptor, bytes, count, offset);
}
ssize_t pwrite(int descriptor, const void* bytes, std::size_t count, off_t offset) __attribute__((alias("pwrite64")));

int fsync(int descriptor) {
    return Fails(Kind::kSync, EIO) ? -1 : static_cast<int>(::syscall(SYS_fsync, descriptor));
}
int fdatasync(int descriptor) {
    return Fails(Kind::kSync, EIO) ? -1 : static_cast<int>(::syscall(SYS_fdatasync, descriptor));
}

int renameat2(int from_directory, const char* from, int to_directory, const char* to, unsigned flags) noexcept {
    if (Fails(Kind::kRename, ENOSPC)) return -1;
    return static_cast<int>(::syscall(SYS_renameat2, from_directory, from, to_directory, to, flags));
}
int renameat(int from_directory, const char* from, int to_directory, const char* to) noexcept {
    return renameat2(from_directory, from, to_directory, to, 0);
}
int rename(const char* from, const char* to) noexcept {
    return renameat2(AT_FDCWD, from, AT_FDCWD, to, 0);
}
int linkat(int from_directory, const char* from, int to_directory, const char* to, int flags) noexcept {
    if (Fails(Kind::kRename, ENOSPC)) return -1;
    return static_cast<int>(::syscall(SYS_linkat, from_directory, from, to_directory, to, flags));
}

void* mmap64(void* address, std::size_t size, int protection, int flags, int descriptor, off64_t offset) noexcept {
    if (Fails(Kind::kMap, ENOMEM)) return MAP_FAILED;
    return reinterpret_cast<void*>(::syscall(SYS_mmap, address, size, protection, flags, descriptor, offset));
}
void* mmap(void* address, std::size_t size, int protection, int flags, int descriptor, off_t offset) noexcept
    __attribute__((alias("mmap64")));

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*work)(void*), void* argument) noexcept {
    using Create = int (*)(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
    static const auto real = Real<Create>("pthread_create");
    return Fails(Kind::kThread, EAGAIN) ? EAGAIN : real(thread, attributes, work, argument);
}

}  // extern "C"
