#include "host/run/file_error.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

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
    if (std::filesystem::is_directory(status)) return "a directory, not a " + kind + " file";
    if (!std::filesystem::exists(status)) return "there is no such " + kind + " file";
    errno = 0;
    if (std::ifstream(path)) return {};
    return "the " + kind + " file can't be opened: " + std::generic_category().message(errno);
}

std::optional<std::uint32_t> FileType(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::array<char, sizeof(tag_psos_header)> bytes{};
    if (!file.read(bytes.data(), bytes.size())) return std::nullopt;
    std::uint32_t type = 0;
    for (std::size_t byte = 0; byte < sizeof type; ++byte) type = type << 8 | static_cast<unsigned char>(bytes[byte]);
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
