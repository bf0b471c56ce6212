#include "diskcopy/folder.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <system_error>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include "base/fold_case.h"

namespace zel::diskcopy {

namespace {

struct CloseStream {
    void operator()(DIR* stream) const noexcept { ::closedir(stream); }
};

}  // namespace

std::string ErrorMessage(int error) {
    return std::generic_category().message(error);
}

std::string Join(const std::string& path, const std::string& name) {
    return path + (path.ends_with('/') ? "" : "/") + name;
}

long ReadSome(int descriptor, void* buffer, std::size_t size) noexcept {
    return static_cast<long>(base::RetryInterrupted([=] { return ::read(descriptor, buffer, size); }));
}

Folder Folder::Open(const std::string& path) {
    return Folder(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

Folder Folder::OpenIn(const std::string& name, bool follow) const {
    return Folder(::openat(Get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | (follow ? 0 : O_NOFOLLOW)));
}

std::vector<std::string> Folder::Names(int& error) const {
    std::vector<std::string> names;
    base::FileDescriptor own(::openat(Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));  // with its own read position
    const std::unique_ptr<DIR, CloseStream> stream(own.IsOpen() ? ::fdopendir(own.Get()) : nullptr);
    if (stream == nullptr) {
        error = errno;
        return names;
    }
    own.Release();  // the stream owns it now
    errno = 0;
    while (const dirent* entry = ::readdir(stream.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != "..") names.push_back(name);
        errno = 0;
    }
    error = errno;
    std::sort(names.begin(), names.end());
    return names;
}

std::string Folder::Find(const std::string& name) const {
    struct stat status {};
    if (Status(name, status)) return name;
    if (std::none_of(name.begin(), name.end(), base::IsAsciiLetter)) return {};  // there is no other case
    int error = 0;
    for (const std::string& candidate : Names(error)) {
        if (base::EqualsFolded(candidate, name)) return candidate;
    }
    return {};
}

bool Folder::Status(const std::string& name, struct stat& status) const noexcept {
    return ::fstatat(Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
}

base::FileDescriptor Folder::OpenFile(const std::string& name) const noexcept {
    base::FileDescriptor file(::openat(Get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status {};
    if (!file.IsOpen() || ::fstat(file.Get(), &status) != 0) return {};
    if (S_ISREG(status.st_mode)) return file;
    errno = EINVAL;
    return {};
}

bool Folder::IsSame(const Folder& other) const noexcept {
    struct stat one {
    }, two{};
    return ::fstat(Get(), &one) == 0 && ::fstat(other.Get(), &two) == 0 && one.st_dev == two.st_dev &&
           one.st_ino == two.st_ino;
}

}  // namespace zel::diskcopy
