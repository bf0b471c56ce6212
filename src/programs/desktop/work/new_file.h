#pragma once

#include <QString>
#include <string_view>

namespace zel::desktop {

/// Writes a file that appears whole or not at all. Its folder is created if it is missing.
/// @throws std::runtime_error with the file's name and the reason.
void WriteNewFile(const QString& file, std::string_view bytes);

}  // namespace zel::desktop
