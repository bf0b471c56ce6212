#pragma once

#include <string>

namespace zel::cli {

/// The directory of the message that a document NUMBER.json in a directory was made from. Empty if there is no such
/// document, or if it does not say.
std::string SourceOfDocuments(const std::string& directory);

}  // namespace zel::cli
