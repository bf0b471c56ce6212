#pragma once

#include <string>
#include <vector>

namespace zel::desktop {

/// Whether a directory has one of the two name lists, bitstream_fontlist.txt and typeface_list.txt.
bool HasNameLists(const std::string& directory);

/// The directory of the name lists that an import goes by, so that the module finds some without being told where:
/// the one that the user has chosen; else the first of `near` that has lists, or whose parent has; else the program's
/// own, which is made with two lists that name nothing yet. All of them are this system's paths.
/// @param chosen  taken as it is; empty when nothing is chosen.
/// @param near    such as the disk that is imported.
/// @param own     made when it is needed.
/// @return empty when the program's own can't be made.
std::string NameListsFor(const std::string& chosen, const std::vector<std::string>& near, const std::string& own);

}  // namespace zel::desktop
