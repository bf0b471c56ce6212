#pragma once

#include <memory>
#include <string>

#include "module/contract/name_maps.h"

namespace zel::fontmap {

/// A name list's text by its file name in the registered directory, CR LF turned into LF; null when it can't be opened.
/// @param path  receives the path that was tried.
std::shared_ptr<NameText> ReadNameList(const char* file_name, std::string& path);

}  // namespace zel::fontmap
