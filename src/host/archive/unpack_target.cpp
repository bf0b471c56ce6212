#include "host/archive/unpack_target.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/fold_case.h"

namespace zel::archive {

namespace {

constexpr mode_t kFolderMode = 0700;
constexpr mode_t kFileMode = 0600;

std::string Folded(std::string text) {
    std::ranges::transform(text, text.begin(), [](char c) { return static_cast<char>(base::FoldCase(c)); });
    return text;
}

std::string LastError() {
    return "can't be unpacked: " + std::generic_category().message(errno);
}

}  // namespace

std::string UnpackTarget::Take(const std::string& path, Kind kind, bool& is_new) {
    const auto [place, inserted] = m_taken.try_emplace(Folded(path), Taken{path, kind});
    is_new = inserted;
    const Taken& taken = place->second;
    if (inserted || (kind == Kind::kDirectory && taken.kind == kind && taken.path == path)) return {};
    if (taken.path != path) return "its name and that of " + taken.path + " differ only in case";
    return taken.kind == kind ? "the archive contains it twice" : "the archive contains it as a file and as a folder";
}

std::string UnpackTarget::MakeDirectories(const EntryName& name, std::size_t count) {
    std::string path;
    for (std::size_t n = 0; n < count; ++n) {
        path += (path.empty() ? "" : "/") + name.parts[n];
        bool is_new = false;
        std::string fault = Take(path, Kind::kDirectory, is_new);
        if (!fault.empty()) return fault;
        if (is_new && ::mkdir((m_root / path).c_str(), kFolderMode) != 0) return LastError();
    }
    return {};
}

std::string UnpackTarget::MakeDirectory(const EntryName& name) {
    return MakeDirectories(name, name.parts.size());
}

base::FileDescriptor UnpackTarget::MakeFile(const EntryName& name, std::string& fault) {
    fault = name.parts.empty() ? "it has the name of a folder" : MakeDirectories(name, name.parts.size() - 1);
    if (!fault.empty()) return {};
    bool is_new = false;
    const std::string path = name.Path();
    fault = Take(path, Kind::kFile, is_new);
    if (!fault.empty()) return {};
    base::FileDescriptor file(
        ::open((m_root / path).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kFileMode));
    if (!file.IsOpen()) fault = LastError();
    return file;
}

std::string UnpackTarget::FinishFile(const base::FileDescriptor& file, std::uint64_t size,
                                     const std::optional<std::timespec>& modified) {
    if (::ftruncate(file.Get(), static_cast<off_t>(size)) != 0) return LastError();
    if (!modified) return {};
    const std::timespec times[] = {{0, UTIME_OMIT}, *modified};
    // A time that this file system can't have is no reason to lose the file.
    ::futimens(file.Get(), times);
    return {};
}

void UnpackTarget::RemoveFile(const EntryName& name) const {
    ::unlink((m_root / name.Path()).c_str());
}

}  // namespace zel::archive
