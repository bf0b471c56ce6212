#include "host/failure_text.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "dialog/zel_trans_dlg.h"
#include "host/import_run.h"
#include "host/module_text.h"
#include "host/native_path.h"
#include "message/psos_header.h"
#include "platform/system/files.h"

namespace {

std::string TooLong(std::size_t length) {
    return "has " + std::to_string(length) + " characters, and the module takes " + std::to_string(MAX_PATH - 1);
}

std::string DirectoryTrouble(const std::string& what, const std::string& module_path) {
    if (module_path.size() >= MAX_PATH) return "the path of the " + what + " directory " + TooLong(module_path.size());
    const std::string path = NativePath(module_path.c_str());
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    std::string text = "the " + what + " directory " + path;
    if (!std::filesystem::exists(status)) return text + " is not there";
    if (!std::filesystem::is_directory(status)) return text + " is not a directory";
    return text + " could not be used";
}

/// Why the module didn't find a message, which may well be there.
std::string MessageTrouble(const ImportPaths& paths) {
    if (paths.message.size() >= MAX_PATH) return "its absolute path " + TooLong(paths.message.size());
    const std::string path = NativePath(paths.message.c_str());
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (std::filesystem::is_directory(status)) return "a directory, not a message file";
    if (!std::filesystem::exists(status)) return "there is no such message file";
    errno = 0;
    if (!std::ifstream(path)) return "the message file can't be opened: " + std::generic_category().message(errno);
    return "the module takes what is behind a name's first dot for the message's id, and finds no file of that name";
}

/// The file's type; nothing when the file ends within its first header.
std::optional<std::uint32_t> FileType(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::array<char, sizeof(tag_psos_header)> bytes{};
    if (!file.read(bytes.data(), bytes.size())) return std::nullopt;
    std::uint32_t type = 0;
    for (std::size_t byte = 0; byte < sizeof type; ++byte) type = type << 8 | static_cast<unsigned char>(bytes[byte]);
    return type;
}

std::string LoadTrouble(const ImportPaths& paths, const ImportOutcome& outcome) {
    if (!outcome.boxes.empty()) return OneLine(outcome.boxes.back().text);
    const std::optional<std::uint32_t> type = FileType(NativePath(paths.message.c_str()));
    if (!type) return "the message file ends within its first header";
    if (*type == kFontFileType) return "not a message file but a font file";
    if (*type != kMessageFileType && !IsRgbaFileType(*type)) {
        return "not a message file: its type is " + std::to_string(*type) + ", a message's is " +
               std::to_string(kMessageFileType);
    }
    return "the message file is broken; \"zeltrans info\" tells where";
}

std::string Reason(const ImportPaths& paths, const ImportOutcome& outcome) {
    if (outcome.exception) return "reading stopped: " + *outcome.exception;
    if (!outcome.status) return "the import did not begin";
    switch (*outcome.status) {
        case kImportFinished:
            break;
        case kBadFontDirectory:
            return DirectoryTrouble("font", paths.font_directory);
        case kBadMessageDirectory:
            return DirectoryTrouble("message", paths.message_directory);
        case kMessageNotFound:
            return MessageTrouble(paths);
        case kLoadFailed:
            return LoadTrouble(paths, outcome);
        case kFontPromptCancelled:
            return "cancelled when a font was missing";
        default:
            return "the import ended with status " + std::to_string(*outcome.status);
    }
    if (!outcome.order_breaches.empty()) return "the module broke its contract: " + outcome.order_breaches.front();
    return {};
}

}  // namespace

ImportPaths PathsOf(const ImportRequest& request) {
    ImportPaths paths;
    paths.message = ModulePath(AbsolutePath(request.message));
    const ModulePathParts parts = SplitModulePath(paths.message);
    paths.message_directory = parts.directory;
    paths.id = parts.name;
    paths.font_directory =
        request.fonts ? ModulePath(AbsolutePath(*request.fonts)) : MachineDirectory(paths.message_directory);
    return paths;
}

std::string DescribeFailure(const ImportRequest& request, const ImportPaths& paths, const ImportOutcome& outcome) {
    const std::string reason = Reason(paths, outcome);
    return reason.empty() ? std::string() : request.message + ": " + reason;
}
