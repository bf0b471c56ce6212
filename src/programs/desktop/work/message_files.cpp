#include "programs/desktop/work/message_files.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "host/run/file_error.h"
#include "module/contract/message_id.h"
#include "module/contract/records/psos_header.h"

namespace zel::desktop {

namespace {

namespace fs = std::filesystem;

bool IsNamed(const fs::path& path, std::string_view name) {
    const std::string own = path.filename().string();
    return std::ranges::equal(own, name, [](char a, char b) { return (a >= 'a' && a <= 'z' ? a - 32 : a) == b; });
}

/// The directory with this name, without regard to case, in another directory; empty if there is none.
fs::path DirectoryIn(const fs::path& parent, std::string_view name) {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(parent, error)) {
        if (IsNamed(entry.path(), name) && entry.is_directory(error)) return entry.path();
    }
    return {};
}

/// The directory of the fonts: MACHINE beside or inside the messages' directory, else that directory.
std::string FontsOf(const fs::path& messages) {
    for (const fs::path& parent : {messages.parent_path(), messages}) {
        const fs::path machine = DirectoryIn(parent, "MACHINE");
        if (!machine.empty()) return machine.string();
    }
    return IsNamed(messages, "MESSAGES") ? (messages.parent_path() / "MACHINE").string() : messages.string();
}

std::vector<std::string> MessagesIn(const fs::path& directory) {
    std::vector<std::string> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(directory)) {
        std::error_code error;
        if (entry.is_regular_file(error) && KindOf(entry.path().string()) == FileKind::kMessage)
            files.push_back(entry.path().string());
    }
    std::ranges::sort(files);
    return files;
}

/// The disk name of a file without a number.
std::string OwnDisk(const std::string& disk, const std::string& name) {
    return disk.empty() ? name : disk + " " + name;
}

}  // namespace

FileKind KindOf(const std::string& path) {
    std::error_code error;
    if (!fs::is_regular_file(path, error)) return FileKind::kUnreadable;
    const std::optional<std::uint32_t> type = run::FileType(path);
    if (type == kFontFileType) return FileKind::kFont;
    return type && (*type == kMessageFileType || IsRgbaFileType(*type)) ? FileKind::kMessage : FileKind::kOther;
}

library::RecordingKey KeyOf(const std::string& disk, const std::string& name) {
    const std::size_t dot = name.rfind('.');
    const std::string_view digits = dot == std::string::npos ? name : std::string_view(name).substr(dot + 1);
    const bool is_number = !digits.empty() && CountDigits(digits) == digits.size();
    if (is_number && MessageNumberOf(digits) <= kLargestMessageNumber) return {disk, MessageNumberOf(digits)};
    return {OwnDisk(disk, name), 0};
}

DiskDirectories DirectoriesOf(const std::string& path) {
    std::error_code error;
    fs::path directory(path);
    if (fs::is_directory(directory, error)) {
        const fs::path messages = DirectoryIn(directory, "MESSAGES");
        if (!messages.empty()) directory = messages;
    } else {
        directory = directory.parent_path();
    }
    return {directory.string(), FontsOf(directory)};
}

MessageSource FindMessages(const std::string& path, library::Library& library, DiskNames& names) {
    MessageSource source{path, {}, {}, {}};
    std::vector<std::string> files;
    const DiskDirectories directories = DirectoriesOf(path);
    if (fs::is_directory(path)) {
        files = MessagesIn(directories.messages);
    } else if (KindOf(path) == FileKind::kMessage) {
        files = {path};
    }
    if (files.empty()) return source;
    source.directory = directories.messages;
    source.font_directory = directories.fonts;
    const std::string disk = names.NameOf(library, source.directory);
    std::set<library::RecordingKey> used;
    for (const std::string& file : files) {
        const std::string name = fs::path(file).filename().string();
        library::RecordingKey key = KeyOf(disk, name);
        if (!used.insert(key).second) key = {OwnDisk(disk, name), key.number};
        source.messages.push_back({file, key});
    }
    return source;
}

}  // namespace zel::desktop
