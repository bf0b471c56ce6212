#include "host/native_path.h"

#include <filesystem>
#include <new>
#include <system_error>

namespace zel::host {

std::string AbsolutePath(const std::string& path) {
    if (!path.empty() && path.front() == '/') return path;
    std::error_code error;
    const std::string current = std::filesystem::current_path(error).string();
    if (error == std::errc::not_enough_memory) throw std::bad_alloc();
    if (error) return path;
    return current == "/" ? current + path : current + '/' + path;
}

ModulePathParts SplitModulePath(const std::string& path) {
    const std::size_t cut = path.rfind('\\');
    if (cut == std::string::npos) return {{}, path};
    return {cut == 0 ? "\\" : path.substr(0, cut), path.substr(cut + 1)};
}

std::string MachineDirectory(const std::string& message_directory) {
    const std::string parent = SplitModulePath(message_directory).directory;
    return parent == "\\" ? "\\MACHINE" : parent + "\\MACHINE";
}

}  // namespace zel::host
