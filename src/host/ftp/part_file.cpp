#include "host/ftp/part_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/whole_file.h"

namespace zel::ftp {

namespace {

[[noreturn]] void Fail(const char* action) {
    throw LocalError(std::string(action) + ": " + std::generic_category().message(errno));
}

}  // namespace

PartFile::PartFile(int directory, std::string name, std::string part_name)
    : m_directory(directory), m_name(std::move(name)), m_part_name(std::move(part_name)) {
    m_file = base::FileDescriptor(openat(directory, m_part_name.c_str(),
                                         O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666));
    if (m_file.Get() < 0) Fail("cannot write");
    struct stat status {};
    if (fstat(m_file.Get(), &status) != 0) Fail("cannot write");
    // A second hard link could be a file elsewhere.
    if (!S_ISREG(status.st_mode) || status.st_nlink != 1) {
        throw LocalError("cannot write: " + m_part_name + " exists and is not a regular file with a single link");
    }
    struct stat named {};
    // The other fetch may have renamed the file between the two calls.
    if (flock(m_file.Get(), LOCK_EX | LOCK_NB) != 0 ||
        fstatat(directory, m_part_name.c_str(), &named, AT_SYMLINK_NOFOLLOW) != 0 || named.st_ino != status.st_ino ||
        named.st_dev != status.st_dev) {
        throw LocalError("in use by another fetch");
    }
    m_size = static_cast<std::uint64_t>(status.st_size);
}

void PartFile::Append(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = base::RetryInterrupted(
            [&] { return pwrite(m_file.Get(), bytes.data(), bytes.size(), static_cast<off_t>(m_size)); });
        if (written < 0) Fail("cannot write");
        m_size += static_cast<std::uint64_t>(written);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
}

void PartFile::Reset() {
    if (ftruncate(m_file.Get(), 0) != 0) Fail("cannot write");
    m_size = 0;
}

std::vector<std::uint8_t> PartFile::Tail(std::size_t count) const {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(std::min<std::uint64_t>(count, m_size)));
    const std::size_t size = base::ReadFullyAt(m_file.Get(), bytes.data(), bytes.size(), m_size - bytes.size());
    if (size < bytes.size()) throw LocalError("cannot read the part that exists");
    return bytes;
}

void PartFile::Finish(bool overwrite) {
    if (fsync(m_file.Get()) != 0) Fail("cannot write");
    const bool renamed = overwrite ? renameat(m_directory, m_part_name.c_str(), m_directory, m_name.c_str()) == 0
                                   : base::RenameToNewName(m_directory, m_part_name.c_str(), m_name.c_str());
    if (!renamed) Fail("cannot rename");
    fsync(m_directory);
}

void PartFile::Discard() noexcept {
    unlinkat(m_directory, m_part_name.c_str(), 0);
}

}  // namespace zel::ftp
