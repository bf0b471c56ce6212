#include "programs/cli/output_check.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <span>
#include <system_error>

#include <sys/stat.h>

#include "base/fold_case.h"
#include "host/native_path.h"
#include "host/settings/sqlite_settings_store.h"
#include "platform/system/files.h"
#include "programs/cli/command.h"
#include "programs/cli/output_file.h"

namespace zel::cli {

namespace {

namespace fs = std::filesystem;

/// Ends of the names of a library's files; the log and its index exist while the library is open.
constexpr const char* kLibraryFiles[] = {"", "-wal", "-shm", "-journal"};

/// Identifies a file; one that does not exist by the last directory of its path that does and the rest of the path.
struct Identity {
    dev_t device = 0;
    ino_t inode = 0;
    std::string name;

    friend bool operator==(const Identity&, const Identity&) = default;
};

std::string WithoutTrailingSlash(std::string path) {
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    return path;
}

/// The path without links and dots, of which the end need not exist.
fs::path Resolved(const fs::path& path) {
    std::error_code error;
    const fs::path resolved = fs::weakly_canonical(host::AbsolutePath(WithoutTrailingSlash(path.string())), error);
    return error ? path : resolved;
}

std::optional<Identity> IdentityOfDirectory(const fs::path& directory) {
    struct stat status {};
    if (stat(directory.empty() ? "." : directory.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return {};
    return Identity{status.st_dev, status.st_ino, {}};
}

/// Empty for what is no regular file and cannot become one.
std::optional<Identity> IdentityOfFile(const std::string& path) {
    std::error_code error;
    const fs::path target = LinkTarget(path, error);
    if (error) return {};
    struct stat status {};
    if (stat(target.c_str(), &status) == 0) {
        if (!S_ISREG(status.st_mode)) return {};
        return Identity{status.st_dev, status.st_ino, {}};
    }
    fs::path directory = Resolved(target), rest;
    std::optional<Identity> identity;
    do {
        rest = directory.filename() / rest;
        directory = directory.parent_path();
        identity = IdentityOfDirectory(directory);
    } while (!identity && directory.has_relative_path());
    if (identity) identity->name = rest.string();
    return identity;
}

bool IsDiskDirectory(const fs::path& directory) {
    const std::string name = directory.filename().string();
    return base::EqualsFolded(name, "MESSAGES") || base::EqualsFolded(name, "MACHINE");
}

/// Whether a directory MESSAGES has a directory MACHINE beside it, or the reverse.
bool HasCounterpart(const fs::path& directory) {
    const std::string own = directory.filename().string();
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory.parent_path(), error)) {
        std::error_code ignored;
        if (IsDiskDirectory(entry.path()) && !base::EqualsFolded(entry.path().filename().string(), own) &&
            entry.is_directory(ignored)) {
            return true;
        }
    }
    return false;
}

/// A name of digits, as messages and fonts have: "12", ".0012".
bool IsNumberName(std::string_view name) {
    if (name.starts_with('.')) name.remove_prefix(1);
    return !name.empty() && std::ranges::all_of(name, [](char c) { return c >= '0' && c <= '9'; });
}

bool AreSameDirectory(const fs::path& a, const fs::path& b) {
    const std::optional<Identity> identity = IdentityOfDirectory(a);
    return identity ? identity == IdentityOfDirectory(b) : Resolved(a) == Resolved(b);
}

class OutputCheck {
  public:
    explicit OutputCheck(const CommandFiles& files) : m_files(files) {}

    void Run() const {
        for (std::size_t i = 0; i < m_files.outputs.size(); ++i) {
            const std::string& path = m_files.outputs[i].path;
            CheckOthers(path, m_files.inputs);
            CheckOthers(path, std::span(m_files.outputs).first(i));
            std::error_code error;
            const fs::path target = LinkTarget(path, error);
            if (error) continue;  // it can't be opened either
            if (!m_files.may_write_disks) {
                CheckPlace(path, target.parent_path());
                CheckNumberName(path, target);
            }
            CheckOutputDirectories(path, target);
        }
        for (const CommandFiles::Directory& directory : m_files.output_directories) CheckDirectory(directory);
    }

  private:
    [[noreturn]] static void Refuse(const std::string& path, const std::string& role) {
        throw CommandError(path + ": can't be written: it is " + role);
    }

    static void CheckOthers(const std::string& path, std::span<const CommandFiles::File> others) {
        const std::optional<Identity> identity = IdentityOfFile(path);
        if (!identity) return;
        for (const CommandFiles::File& other : others) {
            if (identity == IdentityOfFile(other.path)) Refuse(path, other.role);
        }
    }

    bool IsSearched(const fs::path& directory) const {
        return std::ranges::any_of(m_files.searched_directories,
                                   [&](const std::string& searched) { return AreSameDirectory(searched, directory); });
    }

    /// @param directory  of the output, or the output itself if that is a directory.
    void CheckPlace(const std::string& path, const fs::path& directory) const {
        for (fs::path place = Resolved(directory.empty() ? "." : directory); place.has_relative_path();
             place = place.parent_path()) {
            if (IsDiskDirectory(place) && (IsSearched(place) || HasCounterpart(place)))
                throw CommandError(path + ": can't be written: " + place.string() + " contains the files of a disk");
        }
    }

    void CheckNumberName(const std::string& path, const fs::path& target) const {
        std::error_code error;
        if (IsNumberName(target.filename().string()) && IsSearched(target.parent_path()) && fs::exists(target, error))
            Refuse(path, "a message or a font beside those that are read");
    }

    /// Inputs and other outputs must not have the names that files in a directory of outputs get.
    void CheckOutputDirectories(const std::string& path, const fs::path& target) const {
        for (const CommandFiles::Directory& directory : m_files.output_directories) {
            if (directory.is_written(target.filename().string()) &&
                AreSameDirectory(target.parent_path(), directory.path))
                Refuse(path, "a file of " + directory.path + ", where --out writes files of such names");
        }
    }

    void CheckDirectory(const CommandFiles::Directory& directory) const {
        CheckPlace(directory.path, directory.path);
        for (const CommandFiles::File& input : m_files.inputs) CheckOutputDirectories(input.path, input.path);
    }

    const CommandFiles& m_files;
};

}  // namespace

void CommandFiles::ReadByModule(const std::string& path, const std::string& role) {
    inputs.push_back({system::NativePath(system::ModulePath(host::AbsolutePath(path)).c_str()), role});
}

void CommandFiles::SearchByModule(const std::string& path) {
    searched_directories.push_back(system::NativePath(system::ModulePath(host::AbsolutePath(path)).c_str()));
}

void CommandFiles::ReadNameLists(const std::optional<std::string>& directory) {
    if (!directory) return;
    for (const char* list : {"/bitstream_fontlist.txt", "/typeface_list.txt"})
        ReadByModule(*directory + list, "a name list");
}

void CommandFiles::ReadSettings(const std::optional<std::string>& directory) {
    const std::string file =
        (directory ? fs::path(*directory) : settings::SqliteSettingsStore::UserDirectory()) / "settings.sqlite";
    for (const char* end : {"", "-wal", "-shm"}) Read(file + end, "the file of the stored settings");
}

void CommandFiles::ReadLibrary(const std::string& path, const std::string& role) {
    for (const char* end : kLibraryFiles) Read(path + end, role);
}

void CommandFiles::WriteLibrary(const std::string& path) {
    for (const char* end : kLibraryFiles) outputs.push_back({path + end, "the library"});
}

void CommandFiles::Write(const std::optional<std::string>& path, const std::string& option) {
    if (path && path != "-") outputs.push_back({*path, "the file of " + option});
}

void CheckOutputs(const CommandFiles& files) {
    OutputCheck(files).Run();
}

}  // namespace zel::cli
