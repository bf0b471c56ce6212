#pragma once

#include <iostream>
#include <memory>
#include <string>

#include "host/trace.h"
#include "programs/cli/output_file.h"

namespace zel::cli {

/// The trace, on standard output ("-") or in a file that appears only when it is complete.
class TraceOutput {
  public:
    /// @throws CommandError if the file cannot be written.
    TraceOutput(const std::string& path, host::TracePixels pixels)
        : m_file(path == "-" ? nullptr : std::make_unique<OutputFile>(path)),
          m_writer(m_file ? m_file->Stream() : std::cout, pixels) {}

    host::HostObserver& Observer() noexcept { return m_writer; }
    bool IsStandardOutput() const noexcept { return m_file == nullptr; }

    /// @throws CommandError if not everything could be written.
    void Commit() {
        if (m_file) m_file->Commit();
    }

  private:
    std::unique_ptr<OutputFile> m_file;
    host::TraceWriter m_writer;
};

}  // namespace zel::cli
