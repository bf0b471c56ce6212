#include "host/run/import_paths.h"

#include "host/native_path.h"
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

}  // namespace zel::run
