#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zel::version {

/// A library and its version, or the name of its file if it has no other version at run time.
struct LibraryVersion {
    std::string name;
    std::string version;
};

/// The version of the project, such as "0.1.0".
std::string_view ProjectVersion() noexcept;

/// The version, the revision of the sources ("unknown" if they were not in a repository, "-modified" after it if they
/// were changed), the compiler and the libraries, a line each, without a line end after the last one.
/// @param program  the program's name, before the version.
std::string VersionReport(std::string_view program, std::span<const LibraryVersion> libraries);

}  // namespace zel::version
