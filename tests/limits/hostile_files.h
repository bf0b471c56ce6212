#pragma once

#include <span>

#include "limits/hostile_disk.h"

namespace zel::limits {

/// Files, mostly of a few KB, that request far more work or memory than any message needs.
struct HostileFiles {
    /// What they contain, in lower case with underlines.
    const char* name;
    void (*write)(const HostileDisk&);
    /// What one command may take in an optimised build on a fast machine: of the processor's time, and MiB. The
    /// defaults are fair for a message of 12 KB.
    double seconds = 0.2;
    double mebibytes = 64;
};

/// One entry for each bound of the commands' work. Valid for the whole run.
std::span<const HostileFiles> AllHostileFiles();

}  // namespace zel::limits
