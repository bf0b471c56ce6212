#include "host/ftp/safe_directory.h"

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <string_view>
#include <system_error>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

constexpr std::string_view kPartSuffix = ".part";
constexpr std::size_t kKeyDigits = 16;

[[noreturn]] void Fail(const char* doing) {
    throw LocalError(std::string(doing) + ": " + std::generic_category().message(errno));
}

// FNV-1a; a key only has to differ between files that a user fetches, and the ends of its parts are told apart.
std::string Digest(const PartKey& key) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    const std::string size = std::to_string(key.size);
    for (const std::string* text : {&key.source, &key.name, &size, &key.modified}) {
        for (const char c : std::string_view(text->c_str(), text->size() + 1)) {
            hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
        }
    }
    char digits[kKeyDigits + 1];
    std::snprintf(digits, sizeof digits, "%016" PRIx64, hash);
    return digits;
}

// Whether a name is that of a part of the file.
bool IsPartOf(std::string_view part, std::string_view name) {
    return part.size() == name.size() + 1 + kKeyDigits + kPartSuffix.size() && part.starts_with(name) &&
           part[name.size()] == '.' && part.ends_with(kPartSuffix);
}

Descriptor OpenBelow(int directory, const std::string& name) {
    return Descriptor(openat(directory, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
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
    if (m_file.Get() < 0) Fail("can't be written");
    struct stat status {};
    if (fstat(m_file.Get(), &status) != 0) Fail("can't be written");
    // A second name could be that of a file elsewhere.
    if (!S_ISREG(status.st_mode) || status.st_nlink != 1) {
        throw LocalError("can't be written: " + m_part_name + " is there and is no plain file of its own");
    }
    struct stat named {};
    // The other fetch may have brought the file to its name between the two calls.
    if (flock(m_file.Get(), LOCK_EX | LOCK_NB) != 0 ||
        fstatat(directory, m_part_name.c_str(), &named, AT_SYMLINK_NOFOLLOW) != 0 || named.st_ino != status.st_ino ||
        named.st_dev != status.st_dev) {
        throw LocalError("another fetch is writing it");
    }
    m_size = static_cast<std::uint64_t>(status.st_size);
}

void PartFile::Append(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t written = pwrite(m_file.Get(), bytes.data(), bytes.size(), static_cast<off_t>(m_size));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) Fail("can't be written");
        m_size += static_cast<std::uint64_t>(written);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
}

void PartFile::Reset() {
    if (ftruncate(m_file.Get(), 0) != 0) Fail("can't be written");
    m_size = 0;
}

std::vector<std::uint8_t> PartFile::Tail(std::size_t count) const {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(std::min<std::uint64_t>(count, m_size)));
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got = pread(m_file.Get(), bytes.data() + done, bytes.size() - done,
                                  static_cast<off_t>(m_size - bytes.size() + done));
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) throw LocalError("what is there of it can't be read");
        done += static_cast<std::size_t>(got);
    }
    return bytes;
}

void PartFile::Finish(bool overwrite) {
    if (fsync(m_file.Get()) != 0) Fail("can't be written");
    int result = overwrite ? renameat(m_directory, m_part_name.c_str(), m_directory, m_name.c_str())
                           : renameat2(m_directory, m_part_name.c_str(), m_directory, m_name.c_str(), RENAME_NOREPLACE);
    // Some file systems can't rename without replacing; a link is made there only if the name is free.
    if (result != 0 && errno == EINVAL && !overwrite) {
        result = linkat(m_directory, m_part_name.c_str(), m_directory, m_name.c_str(), 0);
        if (result == 0) unlinkat(m_directory, m_part_name.c_str(), 0);
    }
    if (result != 0) Fail("can't take its name");
    fsync(m_directory);
}

void PartFile::Discard() noexcept {
    unlinkat(m_directory, m_part_name.c_str(), 0);
}

SafeDirectory::SafeDirectory(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    m_directory = Descriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (m_directory.Get() < 0)
        throw LocalError(error ? "can't be made: " + error.message() : std::generic_category().message(errno));
}

SafeDirectory SafeDirectory::Below(const std::string& name) const {
    std::string found = name;
    const std::vector<std::string> names = Names();
    if (std::ranges::find(names, name) == names.end()) {
        const auto other = std::ranges::find_if(names, [&](const auto& entry) { return SameName(entry, name); });
        if (other != names.end()) found = *other;
    }
    if (mkdirat(m_directory.Get(), found.c_str(), 0777) != 0 && errno != EEXIST)
        Fail((found + ": can't be made").c_str());
    Descriptor below = OpenBelow(m_directory.Get(), found);
    if (below.Get() < 0) {
        if (errno == ELOOP || errno == ENOTDIR) throw LocalError(found + ": is there and is no directory");
        Fail((found + ": can't be opened").c_str());
    }
    return SafeDirectory(std::move(below));
}

SafeDirectory::Has SafeDirectory::Look(const std::string& name) const {
    struct stat status {};
    if (fstatat(m_directory.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno == ENOENT ? Has::kNothing : Has::kOther;
    }
    return S_ISREG(status.st_mode) ? Has::kFile : Has::kOther;
}

std::optional<std::vector<std::uint8_t>> SafeDirectory::Read(const std::string& name, std::uint64_t limit) const {
    const Descriptor file(openat(m_directory.Get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (file.Get() < 0 || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    if (static_cast<std::uint64_t>(status.st_size) > limit) return std::nullopt;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(status.st_size));
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t got = read(file.Get(), bytes.data() + done, bytes.size() - done);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) break;
        done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return bytes;
}

std::unique_ptr<PartFile> SafeDirectory::OpenPart(const std::string& name, const std::optional<PartKey>& key) const {
    // A file that can't be told from another of its name has no key; its part is never continued.
    const std::string digits = key ? Digest(*key) : std::string(kKeyDigits, '0');
    const std::string part_name = name + "." + digits + std::string(kPartSuffix);
    for (const std::string& entry : Names()) {
        if (IsPartOf(entry, name) && entry != part_name) unlinkat(m_directory.Get(), entry.c_str(), 0);
    }
    std::unique_ptr<PartFile> part(new PartFile(m_directory.Get(), name, part_name));
    if (!key && part->Size() != 0) part->Reset();
    return part;
}

std::vector<std::string> SafeDirectory::Names() const {
    std::vector<std::string> names;
    DIR* const directory = fdopendir(openat(m_directory.Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory == nullptr) return names;
    while (const dirent* entry = readdir(directory)) names.emplace_back(entry->d_name);
    closedir(directory);
    return names;
}

}  // namespace zel::ftp
