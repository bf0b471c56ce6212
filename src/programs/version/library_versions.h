#pragma once

#include <vector>

#include "programs/version/version_report.h"

namespace zel::version {

/// The libraries that the host runs with, as they are at run time, which may differ from those that it was built with.
/// Loads the one of FTP transfers; without it libcurl is missing from the list.
std::vector<LibraryVersion> HostLibraries();

}  // namespace zel::version
