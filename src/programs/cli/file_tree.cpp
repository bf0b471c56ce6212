#include "programs/cli/file_tree.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/terminal_text.h"

namespace zel::cli {

namespace fs = std::filesystem;

std::string UnlistedDirectory::Text() const {
    return (name == "." ? "the directory" : base::TerminalText(name)) + " can't be listed: " + reason;
}

FileTree FindFiles(const fs::path& directory) {
    FileTree tree;
    std::vector<fs::path> directories{directory};
    while (!directories.empty()) {
        const fs::path next = std::move(directories.back());
        directories.pop_back();
        std::error_code error;
        fs::directory_iterator it(next, error);
        for (const fs::directory_iterator end; !error && it != end; it.increment(error)) {
            std::error_code ignored;
            if (!it->is_directory(ignored)) {
                tree.files.push_back(it->path());
            } else if (!it->is_symlink(ignored)) {
                directories.push_back(it->path());
            }
        }
        if (error) tree.unlisted.push_back({next.lexically_relative(directory).string(), error.message()});
    }
    std::ranges::sort(tree.files);
    std::ranges::sort(tree.unlisted, {}, &UnlistedDirectory::name);
    return tree;
}

}  // namespace zel::cli
