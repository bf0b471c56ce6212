#include "layers/declarations.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <set>

#include <nlohmann/json.hpp>

namespace zel::layers {

namespace fs = std::filesystem;

namespace {

/// Functions by their qualified name, each with the files that declare or define it. Overloads share an entry.
using FilesOfFunction = std::map<std::string, std::set<fs::path>>;

struct Functions {
    FilesOfFunction declared;  // in headers, with or without a body
    FilesOfFunction defined;   // in sources
};

constexpr char kAnonymousScope[] = "__anon";

void AddTag(const nlohmann::json& tag, Functions& functions) {
    if (tag.value("_type", "") != "tag") return;
    const std::string scope = tag.value("scope", "");
    if (scope.find(kAnonymousScope) != std::string::npos) return;
    const std::string name = scope + "::" + tag.value("name", "");
    const fs::path file = fs::path(tag.value("path", "")).lexically_normal();
    if (file.extension() == ".h") {
        functions.declared[name].insert(file);
    } else if (tag.value("kind", "") == "function") {
        functions.defined[name].insert(file);
    }
}

struct ClosePipe {
    void operator()(FILE* pipe) const { ::pclose(pipe); }
};

/// False when the program gave nothing.
bool ReadTags(const fs::path& root, Functions& functions) {
    const std::string command = "cd '" + root.string() +
                                "' && ctags -R --languages=C++ --map-C++=+.h --kinds-C++=pf --fields=NFKs"
                                " --output-format=json --sort=no -f - .";
    const std::unique_ptr<FILE, ClosePipe> pipe(::popen(command.c_str(), "r"));
    if (!pipe) return false;
    char* line = nullptr;
    std::size_t capacity = 0;
    bool any = false;
    for (ssize_t length; (length = ::getline(&line, &capacity, pipe.get())) > 0; any = true)
        AddTag(nlohmann::json::parse(line, line + length), functions);
    std::free(line);
    return any;
}

bool Belongs(const fs::path& source, const fs::path& header) {
    if (source.parent_path() != header.parent_path()) return false;
    const std::string stem = header.stem().string();
    return source.stem() == stem || source.stem().string().starts_with(stem + "_");
}

bool IsBelow(const fs::path& file, const std::vector<std::string>& folders) {
    return std::any_of(folders.begin(), folders.end(),
                       [&](const std::string& folder) { return file.string().starts_with(folder + "/"); });
}

}  // namespace

std::vector<std::string> CheckDeclarations(const fs::path& root, const std::vector<std::string>& exempt) {
    Functions functions;
    if (!ReadTags(root, functions)) return {"ctags found nothing below " + root.string()};
    std::vector<std::string> errors;
    for (const auto& [name, sources] : functions.defined) {
        const auto declared = functions.declared.find(name);
        if (declared == functions.declared.end()) continue;
        for (const fs::path& source : sources) {
            const std::set<fs::path>& headers = declared->second;
            if (std::any_of(headers.begin(), headers.end(),
                            [&](const fs::path& header) { return IsBelow(header, exempt) || Belongs(source, header); }))
                continue;
            errors.push_back(source.string() + " defines " + name + ", which " + headers.begin()->string() +
                             " declares");
        }
    }
    return errors;
}

}  // namespace zel::layers
