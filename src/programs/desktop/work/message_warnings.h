#pragma once

#include <string>
#include <vector>

#include "host/library/recording.h"

namespace zel::desktop {

/// An imported message that has warnings.
struct MessageWarnings {
    library::RecordingKey key;
    /// UTF-8, at least one.
    std::vector<std::string> warnings;
};

}  // namespace zel::desktop
