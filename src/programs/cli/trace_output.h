#pragma once

#include <string>

#include "host/trace.h"
#include "programs/cli/output_file.h"

namespace zel::cli {

/// The trace, on standard output ("-") or in a file that appears only when it is complete.
class TraceOutput {
  public:
    /// @throws CommandError if the file cannot be written.
    TraceOutput(const std::string& path, host::TracePixels pixels) : m_file(path), m_writer(m_file.Stream(), pixels) {}

    host::HostObserver& Observer() noexcept { return m_writer; }

    /// @throws CommandError if not everything could be written.
    void Commit() { m_file.Commit(); }

  private:
    OutputFile m_file;
    host::TraceWriter m_writer;
};

}  // namespace zel::cli
