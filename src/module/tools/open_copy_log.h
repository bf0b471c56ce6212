#pragma once

namespace zel::tools {

/// Shows the log of a copy from a disk; the disk library calls it back with it.
/// @param text  path of a text file. It is handed on as it stands, as the argument of a command line that the desktop
/// takes apart: no shell and no program sees it. Null counts as the empty text; any length will do.
void OpenCopyLog(char* text);

}  // namespace zel::tools
