#include "base/regular_file.h"

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

namespace zel::base {

namespace {

/// Of a file that isn't a regular one.
const char* KindName(mode_t mode) noexcept {
    if (S_ISDIR(mode)) return "a directory";
    if (S_ISFIFO(mode)) return "a pipe";
    return S_ISSOCK(mode) ? "a socket" : "a device";
}

[[noreturn]] void ThrowErrno() {
    throw std::system_error(errno, std::generic_category());
}

void RequireRegular(const struct stat& status) {
    if (S_ISREG(status.st_mode)) return;
    throw std::runtime_error(std::string("it is ") + KindName(status.st_mode) + ", not a regular file");
}

}  // namespace

std::string OtherFileKind(const std::filesystem::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0 || S_ISREG(status.st_mode)) return {};
    return KindName(status.st_mode);
}

FileDescriptor OpenRegularFile(const std::filesystem::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0) ThrowErrno();
    RequireRegular(status);
    // Checked again below, since the name may have changed its meaning; then O_NONBLOCK keeps open() from waiting.
    FileDescriptor descriptor(
        RetryInterrupted([&] { return ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); }));
    if (!descriptor.IsOpen() || ::fstat(descriptor.Get(), &status) != 0) ThrowErrno();
    RequireRegular(status);
    return descriptor;
}

std::vector<std::uint8_t> ReadFileBytes(const std::filesystem::path& file, std::size_t most) {
    const FileDescriptor descriptor = OpenRegularFile(file);
    struct stat status {};
    if (::fstat(descriptor.Get(), &status) != 0) ThrowErrno();
    std::vector<std::uint8_t> bytes(
        static_cast<std::size_t>(std::min<std::uint64_t>(static_cast<std::uint64_t>(status.st_size), most)));
    const std::size_t got = ReadFully(descriptor.Get(), bytes.data(), bytes.size());
    if (got < bytes.size() && errno != 0) ThrowErrno();
    bytes.resize(got);
    return bytes;
}

}  // namespace zel::base
