#include "host/run/file_error.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/regular_file.h"
#include "module/contract/records/psos_header.h"
#include "platform/system/files.h"

namespace zel::run {

namespace {

namespace fs = std::filesystem;

/// In bytes; enough to recognise a kind of file.
constexpr std::size_t kRecognised = 512;

/// The first bytes of a file; none if it can't be read.
std::string BeginningOf(const std::string& path) {
    try {
        const std::vector<std::uint8_t> bytes = base::ReadFileBytes(path, kRecognised);
        return {bytes.begin(), bytes.end()};
    } catch (const std::runtime_error&) {
        return {};
    }
}

bool IsText(std::string_view bytes) {
    return std::ranges::all_of(bytes, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte >= 0x20 && byte != 0x7F) || c == '\t' || c == '\n' || c == '\r';
    });
}

/// The kind of a file that is neither a message nor a font; null for an unknown one.
const char* OtherKind(std::string_view bytes) {
    if (bytes.starts_with("\x89PNG\r\n")) return "a PNG picture";
    if (bytes.starts_with("SQLite format 3")) return "a library or another SQLite database";
    return IsText(bytes) ? "text" : nullptr;
}

}  // namespace

std::string TooLong(std::size_t length) {
    return "has " + std::to_string(length) + " characters, and the module accepts " + std::to_string(MAX_PATH - 1);
}

std::string DirectoryError(const std::string& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::none) return "can't be read: " + error.message();
    if (!fs::exists(status)) return "does not exist";
    if (!fs::is_directory(status)) return "is not a directory";
    // A directory that can't be searched hides the files in it.
    const bool can_search = fs::exists(path + "/.", error);
    return can_search ? std::string() : "can't be read: " + error.message();
}

std::string OpenError(const std::string& kind, const std::string& module_path) {
    if (module_path.size() >= MAX_PATH) return "its absolute path " + TooLong(module_path.size());
    const std::string path = system::NativePath(module_path.c_str());
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::none) return "the " + kind + " file can't be opened: " + error.message();
    if (!fs::exists(status)) return "there is no such " + kind + " file";
    if (!fs::is_regular_file(status)) return base::OtherFileKind(path) + ", not a " + kind + " file";
    try {
        base::OpenRegularFile(path);
    } catch (const std::runtime_error& failure) {
        return "the " + kind + " file can't be opened: " + failure.what();
    }
    return {};
}

std::optional<std::uint32_t> FileType(const std::string& path) {
    std::vector<std::uint8_t> bytes;
    try {
        bytes = base::ReadFileBytes(path, sizeof(tag_psos_header));
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
    if (bytes.size() < sizeof(tag_psos_header)) return std::nullopt;
    std::uint32_t type = 0;
    for (std::size_t byte = 0; byte < sizeof type; ++byte) type = type << 8 | bytes[byte];
    return type;
}

std::string ContentError(const std::string& kind, const std::string& path) {
    const std::uint32_t wanted = kind == "font" ? kFontFileType : kMessageFileType;
    const std::string beginning = BeginningOf(path);
    if (beginning.empty()) return "the " + kind + " file is empty";
    const std::string other = "not a " + kind + " file";
    if (const char* const name = OtherKind(beginning)) return other + " but " + name;
    const std::optional<std::uint32_t> type = FileType(path);
    if (!type) return "the " + kind + " file ends within its first header";
    if (*type == wanted || (wanted == kMessageFileType && IsRgbaFileType(*type)))
        return "the " + kind + " file is damaged; \"zeltrans info\" shows where";
    if (*type == kFontFileType) return other + " but a font file";
    if (*type == kMessageFileType) return other + " but a message file";
    return other + ": its type is " + std::to_string(*type) + ", a " + kind + "'s is " + std::to_string(wanted);
}

}  // namespace zel::run
