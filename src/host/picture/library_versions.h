#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zel::picture {

/// Names and versions of the libraries of pictures that tell it at run time.
std::vector<std::pair<std::string, std::string>> LibraryVersions();

}  // namespace zel::picture
