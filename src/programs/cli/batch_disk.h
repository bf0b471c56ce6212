#pragma once

#include <string>

#include "host/recorder/disk_names.h"
#include "host/recorder/relocation.h"

namespace zel::cli {

/// A disk of a batch: a directory, or a part of an archive.
struct BatchDisk {
    /// The directory as the user gave it; of an archive, its file and the folder in it.
    std::string name;
    /// The directory of its files.
    std::string directory;
    /// Of an archive, which is unpacked somewhere else.
    recorder::Relocation relocation{};
    /// Of a disk at the top of an archive: its usual name. Empty for that of the directory.
    std::string usual_name{};
    /// Why there is no such disk; empty if there is.
    std::string error{};
};

}  // namespace zel::cli
