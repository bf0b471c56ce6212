#include "programs/desktop/work/name_lists.h"

#include <filesystem>
#include <string_view>
#include <utility>

#include "base/whole_file.h"

namespace zel::desktop {

namespace {

namespace fs = std::filesystem;

/// Longer ones can't be registered once they are spelled as the module's paths; only what the user has chosen is told.
constexpr std::size_t kLongestDirectory = 250;

/// Behind two headings, which are read and thrown away, an entry a line; here there are headings only.
constexpr std::pair<std::string_view, std::string_view> kEmptyLists[] = {
    {"bitstream_fontlist.txt",
     "Bitstream typefaces by number, a line each: name, TAB, number; or a family's heading,\n"
     "then TAB, style, TAB, number\n"},
    {"typeface_list.txt",
     "Installed typefaces by Bitstream name, a line each:\n"
     "installed typeface, TAB, name in the other list with BT behind it\n"},
};

bool MakeOwn(const std::string& own) {
    try {
        fs::create_directories(own);
        for (const auto& [name, text] : kEmptyLists) {
            if (!fs::exists(fs::path(own) / name)) base::WriteWholeFile(fs::path(own) / name, text);
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
            if (directory.size() <= kLongestDirectory && HasNameLists(directory)) return directory;
        }
    }
    return own.size() <= kLongestDirectory && MakeOwn(own) ? own : std::string();
}

}  // namespace zel::desktop
