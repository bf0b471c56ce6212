#include "programs/desktop/work/name_lists.h"

#include <filesystem>
#include <string_view>
#include <utility>

#include "base/whole_file.h"

namespace zel::desktop {

namespace {

namespace fs = std::filesystem;

/// In bytes. A longer path is too long for the module in its own form. Such a path is used, and reported, only if the
/// user has chosen it.
constexpr std::size_t kMaxDirectoryLength = 250;

/// File names and contents of lists without entries. The two heading lines are ignored; each further line is an entry.
constexpr std::pair<std::string_view, std::string_view> kEmptyLists[] = {
    {"bitstream_fontlist.txt",
     "Bitstream typefaces by number, one per line: name, TAB, number; or a family's heading,\n"
     "then TAB, style, TAB, number\n"},
    {"typeface_list.txt",
     "Installed typefaces by Bitstream name, one per line:\n"
     "installed typeface, TAB, name in the other list followed by BT\n"},
};

bool CreateLists(const std::string& directory) {
    try {
        fs::create_directories(directory);
        for (const auto& [name, text] : kEmptyLists) {
            if (!fs::exists(fs::path(directory) / name)) base::WriteWholeFile(fs::path(directory) / name, text);
        }
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

bool HasNameLists(const std::string& directory) {
    std::error_code error;
    return fs::is_regular_file(fs::path(directory) / kEmptyLists[0].first, error) ||
           fs::is_regular_file(fs::path(directory) / kEmptyLists[1].first, error);
}

std::string NameListsFor(const std::string& chosen, const std::vector<std::string>& near, const std::string& own) {
    if (!chosen.empty()) return chosen;
    for (const std::string& place : near) {
        for (const std::string& directory : {place, fs::path(place).parent_path().string()}) {
            if (directory.size() <= kMaxDirectoryLength && HasNameLists(directory)) return directory;
        }
    }
    return own.size() <= kMaxDirectoryLength && CreateLists(own) ? own : std::string();
}

}  // namespace zel::desktop
