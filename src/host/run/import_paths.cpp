#include "host/run/import_paths.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

#include "base/text.h"
#include "host/native_path.h"
#include "module/contract/message_id.h"
#include "platform/system/files.h"

namespace zel::run {

ImportPaths ImportPathsOf(const std::string& message, const std::optional<std::string>& fonts) {
    ImportPaths paths;
    paths.message = system::ModulePath(host::AbsolutePath(message));
    const host::ModulePathParts parts = host::SplitModulePath(paths.message);
    paths.message_directory = parts.directory;
    paths.id = parts.name;
    paths.font_directory =
        fonts ? system::ModulePath(host::AbsolutePath(*fonts)) : host::MachineDirectory(paths.message_directory);
    return paths;
}

std::string FindMessageFile(const ImportPaths& paths) {
    const std::string id(WithoutLeadingDot(paths.id));
    std::vector<std::string> names{paths.id};
    if (id != paths.id) names.push_back(id);
    if (!id.empty() && CountDigits(id) == id.size()) {
        const int number = MessageNumberOf(id);
        for (const std::string& name : {base::NumberedName(number), base::FourDigits(number)}) {
            if (std::ranges::find(names, name) == names.end()) names.push_back(name);
        }
    }
    for (const std::string& name : names) {
        const std::string file = system::NativePath((paths.message_directory + "\\" + name).c_str());
        std::error_code ignored;
        if (std::filesystem::exists(std::filesystem::symlink_status(file, ignored))) return file;
    }
    return {};
}

}  // namespace zel::run
