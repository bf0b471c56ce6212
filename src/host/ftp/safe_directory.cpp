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
#include <sys/stat.h>
#include <unistd.h>

#include "base/fold_case.h"
#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

constexpr std::string_view kPartSuffix = ".part";
constexpr std::size_t kKeyDigits = 16;

[[noreturn]] void Fail(const std::string& action) {
    throw LocalError(action + ": " + std::generic_category().message(errno));
}

// FNV-1a. A key only has to differ between the files that one user fetches. Each text includes its NUL, so that the
// boundaries between the texts count.
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

// Whether a name is NAME.KEY.part, with any key.
bool IsPartOf(std::string_view part, std::string_view name) {
    return part.size() == name.size() + 1 + kKeyDigits + kPartSuffix.size() && part.starts_with(name) &&
           part[name.size()] == '.' && part.ends_with(kPartSuffix);
}

// Whether a name can only be that of an entry of the directory itself.
bool IsEntryName(const std::string& name) {
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string::npos &&
           name.find('\0') == std::string::npos;
}

void RequireEntryName(const std::string& name) {
    if (!IsEntryName(name)) throw LocalError("invalid name: " + Printable(name));
}

base::FileDescriptor OpenBelow(int directory, const std::string& name) {
    return base::FileDescriptor(openat(directory, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

}  // namespace

SafeDirectory::SafeDirectory(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    m_directory = base::FileDescriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (m_directory.Get() < 0)
        throw LocalError(error ? "cannot create: " + error.message() : std::generic_category().message(errno));
}

SafeDirectory SafeDirectory::Below(const std::string& name) const {
    RequireEntryName(name);
    std::string found = name;
    const std::vector<std::string> names = Names();
    if (std::ranges::find(names, name) == names.end()) {
        const auto other =
            std::ranges::find_if(names, [&](const auto& entry) { return base::EqualsFolded(entry, name); });
        if (other != names.end()) found = *other;
    }
    if (mkdirat(m_directory.Get(), found.c_str(), 0777) != 0 && errno != EEXIST) Fail(found + ": cannot create");
    base::FileDescriptor below = OpenBelow(m_directory.Get(), found);
    if (below.Get() < 0) {
        if (errno == ELOOP || errno == ENOTDIR) throw LocalError(found + ": exists and is not a directory");
        Fail(found + ": cannot open");
    }
    return SafeDirectory(std::move(below));
}

SafeDirectory::Type SafeDirectory::TypeOf(const std::string& name) const {
    if (!IsEntryName(name)) return Type::kOther;
    struct stat status {};
    if (fstatat(m_directory.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return errno == ENOENT ? Type::kMissing : Type::kOther;
    }
    return S_ISREG(status.st_mode) ? Type::kFile : Type::kOther;
}

std::optional<std::vector<std::uint8_t>> SafeDirectory::Read(const std::string& name, std::uint64_t limit) const {
    if (!IsEntryName(name)) return std::nullopt;
    const base::FileDescriptor file(
        openat(m_directory.Get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status {};
    if (file.Get() < 0 || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    if (static_cast<std::uint64_t>(status.st_size) > limit) return std::nullopt;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(status.st_size));
    if (base::ReadFully(file.Get(), bytes.data(), bytes.size()) != bytes.size()) return std::nullopt;
    return bytes;
}

std::unique_ptr<PartFile> SafeDirectory::OpenPart(const std::string& name, const std::optional<PartKey>& key) const {
    RequireEntryName(name);
    // Without a key an earlier part may belong to another version of the file, so it is never resumed.
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
