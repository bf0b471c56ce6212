#pragma once

#include <iostream>
#include <memory>
#include <string>

#include "host/trace.h"
#include "programs/cli/output_file.h"

namespace zel::cli {

/// The trace, on standard output ("-") or in a file that appears whole.
class TraceOutput {
  public:
    /// @throws CommandError when the file can't be written.
    explicit TraceOutput(const std::string& path, host::TracePixels pixels = host::TracePixels::kNo)
        : m_file(path == "-" ? nullptr : std::make_unique<OutputFile>(path)), m_writer(Stream(), pixels) {}

    host::HostObserver& Observer() noexcept { return m_writer; }

    /// @throws CommandError when not everything could be written.
    void Commit() {
        if (m_file) m_file->Commit();
    }

  private:
    std::ostream& Stream() { return m_file ? m_file->Stream() : std::cout; }

    std::unique_ptr<OutputFile> m_file;
    host::TraceWriter m_writer;
};

}  // namespace zel::cli
