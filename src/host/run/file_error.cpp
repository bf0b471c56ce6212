#include "host/run/file_error.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <vector>

#include "base/regular_file.h"
#include "module/contract/records/psos_header.h"
#include "platform/system/files.h"

namespace zel::run {

std::string TooLong(std::size_t length) {
    return "has " + std::to_string(length) + " characters, and the module accepts " + std::to_string(MAX_PATH - 1);
}

std::string OpenError(const std::string& kind, const std::string& module_path) {
    if (module_path.size() >= MAX_PATH) return "its absolute path " + TooLong(module_path.size());
    const std::string path = system::NativePath(module_path.c_str());
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) return "there is no such " + kind + " file";
    if (!std::filesystem::is_regular_file(status)) return base::OtherFileKind(path) + ", not a " + kind + " file";
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

std::string ContentError(const std::string& kind, std::optional<std::uint32_t> file_type) {
    const std::uint32_t wanted = kind == "font" ? kFontFileType : kMessageFileType;
    if (!file_type) return "the " + kind + " file ends within its first header";
    if (*file_type == wanted) return "the " + kind + " file is damaged; \"zeltrans info\" shows where";
    const std::string other = "not a " + kind + " file";
    if (*file_type == kFontFileType) return other + " but a font file";
    if (*file_type == kMessageFileType) return other + " but a message file";
    return other + ": its type is " + std::to_string(*file_type) + ", a " + kind + "'s is " + std::to_string(wanted);
}

}  // namespace zel::run
