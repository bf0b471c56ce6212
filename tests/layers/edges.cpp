#include "layers/edges.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace zel::layers {

namespace fs = std::filesystem;

namespace {

constexpr char kIncludeMark[] = "#include \"";

/// The quoted includes of a file, in order.
std::vector<std::string> IncludesOf(const fs::path& file) {
    std::vector<std::string> includes;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        if (!line.starts_with(kIncludeMark)) continue;
        const std::size_t begin = sizeof kIncludeMark - 1;
        includes.push_back(line.substr(begin, line.find('"', begin) - begin));
    }
    return includes;
}

bool IsSource(const fs::path& file) {
    return file.extension() == ".h" || file.extension() == ".cpp";
}

std::vector<fs::path> SourcesBelow(const fs::path& root) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.is_regular_file() && IsSource(entry.path())) files.push_back(entry.path().lexically_relative(root));
    }
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

EdgeTable ReadEdgeTable(const fs::path& file) {
    EdgeTable table;
    std::ifstream in(file);
    if (!in) table.errors.push_back(file.string() + " can't be read");
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line.front() == '#') continue;
        const std::size_t colon = line.find(':');
        if (colon == std::string::npos) {
            table.errors.push_back("no room: " + line);
            continue;
        }
        const std::string room = line.substr(0, colon);
        if (table.allowed.contains(room)) table.errors.push_back(room + " is listed twice");
        std::set<std::string>& allowed = table.allowed[room];
        std::istringstream rest(line.substr(colon + 1));
        for (std::string below; rest >> below;) {
            if (std::find(table.rooms.begin(), table.rooms.end(), below) == table.rooms.end())
                table.errors.push_back(room + " may not stand on " + below + ", which is not listed before it");
            allowed.insert(below);
        }
        table.rooms.push_back(room);
    }
    return table;
}

std::vector<std::string> CheckIncludes(const fs::path& root, const EdgeTable& table) {
    std::vector<std::string> errors;
    for (const fs::path& file : SourcesBelow(root)) {
        const std::string room = file.parent_path().string();
        const auto allowed = table.allowed.find(room);
        if (allowed == table.allowed.end()) {
            errors.push_back(file.string() + " is in a room that is not listed");
            continue;
        }
        for (const std::string& include : IncludesOf(root / file)) {
            const std::string below = fs::path(include).parent_path().string();
            if (below.empty() || below == room || allowed->second.contains(below)) continue;
            errors.push_back(file.string() + " includes " + include);
        }
    }
    return errors;
}

std::vector<std::string> CheckFirstIncludes(const fs::path& root) {
    std::vector<std::string> errors;
    for (const fs::path& file : SourcesBelow(root)) {
        fs::path header = file;
        header.replace_extension(".h");
        if (file.extension() != ".cpp" || !fs::exists(root / header)) continue;
        const std::vector<std::string> includes = IncludesOf(root / file);
        if (includes.empty() || includes.front() != header.string())
            errors.push_back(file.string() + " does not include " + header.string() + " first");
    }
    return errors;
}

}  // namespace zel::layers
