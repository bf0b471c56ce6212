#pragma once

#include <map>
#include <string>

#include "host/library/library.h"

namespace zel::exporter {

/// Reads the files that recordings were made from, and keeps those that the next message may have too.
class SourceFiles {
  public:
    /// @param library  kept alive by the caller.
    explicit SourceFiles(library::Library& library) : m_library(library) {}

    /// Sets Recording::files, as far as the library keeps them. @throws library::LibraryError
    void AddTo(library::Recording& recording);

  private:
    library::Library& m_library;
    /// By checksum.
    std::map<std::string, library::SharedFile> m_fonts;
};

}  // namespace zel::exporter
