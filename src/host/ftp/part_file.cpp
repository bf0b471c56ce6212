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

namespace zel::ftp {

namespace {

[[noreturn]] void Fail(const char* action) {
    throw LocalError(std::string(action) + ": " + std::generic_category().message(errno));
}

}  // namespace

Descriptor::Descriptor(Descriptor&& other) noexcept : m_value(std::exchange(other.m_value, -1)) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    std::swap(m_value, other.m_value);
    return *this;
}

Descriptor::~Descriptor() {
    if (m_value >= 0) close(m_value);
}

PartFile::PartFile(int directory, std::string name, std::string part_name)
    : m_directory(directory), m_name(std::move(name)), m_part_name(std::move(part_name)) {
    m_file = Descriptor(openat(directory, m_part_name.c_str(),
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
        const ssize_t written = pwrite(m_file.Get(), bytes.data(), bytes.size(), static_cast<off_t>(m_size));
        if (written < 0 && errno == EINTR) continue;
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
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got = pread(m_file.Get(), bytes.data() + done, bytes.size() - done,
                                  static_cast<off_t>(m_size - bytes.size() + done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) throw LocalError("cannot read the part that exists");
        done += static_cast<std::size_t>(got);
    }
    return bytes;
}

void PartFile::Finish(bool overwrite) {
    if (fsync(m_file.Get()) != 0) Fail("cannot write");
    int result = overwrite ? renameat(m_directory, m_part_name.c_str(), m_directory, m_name.c_str())
                           : renameat2(m_directory, m_part_name.c_str(), m_directory, m_name.c_str(), RENAME_NOREPLACE);
    // Some file systems do not support RENAME_NOREPLACE; a hard link also fails if the name exists.
    if (result != 0 && errno == EINVAL && !overwrite) {
        result = linkat(m_directory, m_part_name.c_str(), m_directory, m_name.c_str(), 0);
        if (result == 0) unlinkat(m_directory, m_part_name.c_str(), 0);
    }
    if (result != 0) Fail("cannot rename");
    fsync(m_directory);
}

void PartFile::Discard() noexcept {
    unlinkat(m_directory, m_part_name.c_str(), 0);
}

}  // namespace zel::ftp
