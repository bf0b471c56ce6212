#pragma once

#include <string>
#include <vector>

#include "host/library/recording.h"

namespace zel::library {

/// One line of a library's table of contents.
struct LibraryEntry {
    RecordingKey key;
    RecordingKind kind = RecordingKind::kMessage;
    std::string text;
    /// Path of the message's own file.
    std::string source;
    std::string recorded_at;
    int warnings = 0;
};

/// What a recording was made from, to find out whether it is up to date.
struct RecordingOrigin {
    std::string options;
    std::vector<SourceFile> sources;
    int warnings = 0;
};

}  // namespace zel::library
