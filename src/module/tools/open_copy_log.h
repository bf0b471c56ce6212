#pragma once

namespace zel::tools {

/// Shows the log of a copy from a disk. Callback of the disk library.
/// @param path  of a text file; null for the empty text. The desktop splits the command line that contains it; it is
///              never passed to a shell.
void OpenCopyLog(char* path);

}  // namespace zel::tools
