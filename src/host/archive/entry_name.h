#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zel::archive {

/// The name of an entry, checked.
struct EntryName {
    /// Names of the folders and of the entry itself, none of them empty, "." or "..". None for the top of the archive.
    std::vector<std::string> parts;
    /// Why the name is refused, to follow the name and a colon; empty for a good one.
    std::string fault;

    /// The parts with slashes between them.
    std::string Path() const;
    /// Whether the last part is in a folder of this name, without regard to case.
    bool IsIn(std::string_view folder) const;
};

/// Checks a name from an archive. One that would lead out of the directory in which the archive is unpacked, or that
/// the module could take for another path, is refused.
EntryName ParseEntryName(std::string_view name);

}  // namespace zel::archive
