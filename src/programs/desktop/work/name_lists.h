#pragma once

#include <string>
#include <vector>

namespace zel::desktop {

/// Whether a directory has one of the two name lists, bitstream_fontlist.txt and typeface_list.txt.
bool HasNameLists(const std::string& directory);

/// The directory of the name lists for an import: the user's choice; else the first directory of `near` that has lists,
/// or whose parent has; else the program's own, in which two empty lists are created. Paths are in this system's form.
/// @param chosen  used as it is; empty for no choice.
/// @param near    such as the directory that is imported.
/// @param own     created when needed.
/// @return empty when `own` cannot be created.
std::string NameListsFor(const std::string& chosen, const std::vector<std::string>& near, const std::string& own);

}  // namespace zel::desktop
