#include "platform/system/drives.h"

#include <array>

#include "base/fold_case.h"
#include "platform/system/errors.h"

namespace zel::system {

namespace {

constexpr int kLetters = 26;

std::array<Drive, kLetters>& Drives() {
    static auto& drives = *new std::array<Drive, kLetters>;  // outlives every module
    return drives;
}

Drive* DriveOfLetter(char letter) noexcept {
    const char folded = base::FoldCase(letter);
    return folded >= 'a' && folded <= 'z' ? &Drives()[static_cast<std::size_t>(folded - 'a')] : nullptr;
}

/// Whether a path is `directory` or below it.
bool IsBelow(std::string_view path, std::string_view directory) noexcept {
    return path.starts_with(directory) &&
           (directory == "/" || path.size() == directory.size() || path[directory.size()] == '/');
}

}  // namespace

void MountDrive(char letter, const std::string& directory) {
    Drive* const drive = DriveOfLetter(letter);
    if (drive == nullptr || directory.size() > kLongestMount) return;
    std::size_t length = directory.size();
    while (length > 1 && directory[length - 1] == '/') --length;
    *drive = {directory.substr(0, length), ERROR_SUCCESS};
}

void MountUnreadableDrive(char letter, DWORD error) {
    if (Drive* const drive = DriveOfLetter(letter)) *drive = {std::string(), error};
}

const Drive* DriveOf(std::string_view path) noexcept {
    return path.size() >= 2 && path[1] == ':' ? DriveOfLetter(path[0]) : nullptr;
}

const Drive* DriveContaining(std::string_view nativePath, char& letter) noexcept {
    const Drive* best = nullptr;
    letter = 0;
    for (std::size_t i = 0; i < Drives().size(); ++i) {
        const Drive& drive = Drives()[i];
        if (drive.directory.empty() || !IsBelow(nativePath, drive.directory)) continue;
        if (best != nullptr && drive.directory.size() <= best->directory.size()) continue;
        best = &drive;
        letter = static_cast<char>('A' + i);
    }
    return best;
}

}  // namespace zel::system
