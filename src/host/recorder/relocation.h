#pragma once

#include <string>

#include "host/document/message_record.h"

namespace zel::recorder {

/// The place under which files are recorded that are read from another one, such as those of an archive: `to` instead
/// of `from`. Both are absolute paths of this system; empty for files that are recorded where they are.
struct Relocation {
    std::string from, to;

    bool IsNone() const noexcept { return from.empty(); }

    /// The path under which a file is recorded. A path outside `from` is unchanged, as is one outside `to` below.
    std::string Recorded(const std::string& path) const;
    /// The path of a recorded file.
    std::string Actual(const std::string& path) const;
    /// A text, such as a reason, with each path in it as recorded.
    std::string InText(std::string text) const;
    /// Changes the paths of a message, which are in the module's form, and those in its texts.
    void Apply(document::MessageRecord& message) const;
};

}  // namespace zel::recorder
