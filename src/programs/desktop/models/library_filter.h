#pragma once

#include <QString>
#include <optional>
#include <string>

namespace zel::desktop {

enum class LibraryOrder {
    /// By disk, then by number.
    kDisk,
    /// By number, then by disk.
    kNumber,
    /// By the beginning of the text.
    kTitle,
};

/// Which messages of a library are listed, and in which order.
struct LibraryFilter {
    /// Every word must be found in a message. The best match is first then, and the order is not used.
    QString words;
    /// Only messages of this disk.
    std::optional<std::string> disk;
    bool only_with_warnings = false;
    LibraryOrder order = LibraryOrder::kDisk;
    /// The messages of each disk are together, in their order, below a heading. Not used with words.
    bool grouped = false;

    bool HasWords() const { return !words.trimmed().isEmpty(); }
    /// Every message is listed.
    bool IsAll() const { return !HasWords() && !disk && !only_with_warnings; }
    bool operator==(const LibraryFilter&) const = default;
};

}  // namespace zel::desktop
