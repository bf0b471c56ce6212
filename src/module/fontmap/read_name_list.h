#pragma once

#include <memory>
#include <string>

#include "module/contract/name_maps.h"

namespace zel::fontmap {

/// Reads a name list from the registered directory, with CR LF converted to LF.
/// @param path  receives the path of the file.
/// @return null when the file can't be opened.
std::shared_ptr<NameText> ReadNameList(const char* file_name, std::string& path);

}  // namespace zel::fontmap
