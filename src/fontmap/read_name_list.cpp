#include <cstdio>
#include <memory>

#include "fontmap/text_lines.h"
#include "pipeline/module_state.h"
#include "platform/system/files.h"

std::optional<std::string> ReadNameList(const char* file_name, std::string& path) {
    path = std::string(g_szMapDir) + file_name;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(crt::fopen(path.c_str(), "rt"), &std::fclose);
    if (!file) return std::nullopt;
    std::string text;
    char buffer[16384];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get())) text.append(buffer, count);
    return text;
}
