#include "host/run/failure_text.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

#include "host/module_text.h"
#include "host/run/file_error.h"
#include "host/run/import_paths.h"
#include "host/run/import_run.h"
#include "module/contract/records/psos_header.h"
#include "module/contract/zel_trans_dlg.h"
#include "platform/system/files.h"

namespace zel::run {

namespace {

std::string UnusableDirectory(const std::string& kind, const std::string& module_path) {
    if (module_path.size() >= MAX_PATH) return "the path of the " + kind + " directory " + TooLong(module_path.size());
    const std::string path = system::NativePath(module_path.c_str());
    const std::string error = DirectoryError(path);
    return "the " + kind + " directory " + path + " " + (error.empty() ? "could not be used" : error);
}

/// Why no message can be read from the path that the user gave, whatever the other directories are; empty if there is a
/// message, or if its directory is the cause.
std::string PathError(const ImportPaths& paths) {
    if (paths.message.size() >= MAX_PATH) return {};
    const std::string file = FindMessageFile(paths);
    const std::string directory = system::NativePath(paths.message_directory.c_str());
    if (file.empty()) return DirectoryError(directory).empty() ? OpenError("message", paths.message) : std::string();
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return OpenError("message", system::ModulePath(file));
    const std::optional<std::uint32_t> type = FileType(file);
    const bool is_message = type && (*type == kMessageFileType || IsRgbaFileType(*type));
    return is_message ? std::string() : ContentError("message", file);
}

/// Why the directories of an import could not be used. The module checks the font directory first, even if there is no
/// message.
std::string DirectoriesError(const ImportPaths& paths, int status) {
    const std::string error = PathError(paths);
    if (!error.empty()) return error;
    if (status == ImportStatus::kBadFontDirectory && paths.message_directory.size() < MAX_PATH &&
        DirectoryError(system::NativePath(paths.message_directory.c_str())).empty()) {
        return UnusableDirectory("font", paths.font_directory);
    }
    return UnusableDirectory("message", paths.message_directory);
}

/// Why the module did not find a message, even though the file may exist.
std::string MessageError(const ImportPaths& paths) {
    std::string error = OpenError("message", paths.message);
    if (!error.empty()) return error;
    return "the module uses the text after a name's first dot as the message's id, and finds no file of that name";
}

std::string LoadError(const ImportPaths& paths, const ImportOutcome& outcome) {
    if (!outcome.boxes.empty()) return host::OneLine(outcome.boxes.back().text);
    if (std::string error = OpenError("message", paths.message); !error.empty()) return error;
    return ContentError("message", system::NativePath(paths.message.c_str()));
}

std::string Reason(const ImportPaths& paths, const ImportOutcome& outcome) {
    if (outcome.exception) return "reading stopped: " + *outcome.exception;
    if (!outcome.status) return "the import did not begin";
    switch (*outcome.status) {
        case ImportStatus::kFinished:
            break;
        case ImportStatus::kBadFontDirectory:
        case ImportStatus::kBadMessageDirectory:
            return DirectoriesError(paths, *outcome.status);
        case ImportStatus::kMessageNotFound:
            return MessageError(paths);
        case ImportStatus::kLoadFailed:
            return LoadError(paths, outcome);
        case ImportStatus::kFontPromptCancelled:
            return "cancelled when a font was missing";
        default:
            return "the import ended with status " + std::to_string(*outcome.status);
    }
    if (!outcome.order_breaches.empty()) return "the module broke its contract: " + outcome.order_breaches.front();
    return {};
}

}  // namespace

std::string DescribeFailure(const ImportRequest& request, const ImportPaths& paths, const ImportOutcome& outcome) {
    const std::string reason = Reason(paths, outcome);
    return reason.empty() ? std::string() : request.message + ": " + reason;
}

}  // namespace zel::run
