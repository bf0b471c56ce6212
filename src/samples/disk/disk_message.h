#pragma once

#include "files/byte_writer.h"

namespace zel::samples {

/// A file of the demonstration disk's message directory.
struct DiskMessage {
    unsigned number = 0;
    /// Describes what it shows.
    const char* title = "";
    files::Bytes bytes;
};

}  // namespace zel::samples
