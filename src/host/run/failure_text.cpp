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

std::string DirectoryError(const std::string& what, const std::string& module_path) {
    if (module_path.size() >= MAX_PATH) return "the path of the " + what + " directory " + TooLong(module_path.size());
    const std::string path = system::NativePath(module_path.c_str());
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    std::string text = "the " + what + " directory " + path;
    if (!std::filesystem::exists(status)) return text + " does not exist";
    if (!std::filesystem::is_directory(status)) return text + " is not a directory";
    return text + " could not be used";
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
    const std::optional<std::uint32_t> type = FileType(system::NativePath(paths.message.c_str()));
    return ContentError("message", type && IsRgbaFileType(*type) ? kMessageFileType : type);
}

std::string Reason(const ImportPaths& paths, const ImportOutcome& outcome) {
    if (outcome.exception) return "reading stopped: " + *outcome.exception;
    if (!outcome.status) return "the import did not begin";
    switch (*outcome.status) {
        case ImportStatus::kFinished:
            break;
        case ImportStatus::kBadFontDirectory:
            return DirectoryError("font", paths.font_directory);
        case ImportStatus::kBadMessageDirectory:
            return DirectoryError("message", paths.message_directory);
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
