#pragma once

#include "host/ftp/fetch.h"
#include "programs/cli/progress_line.h"

namespace zel::cli {

/// Prints a line per file, and on a terminal also the progress of the current file. An interrupt cancels the fetch.
class FetchProgress : public ftp::FetchObserver {
  public:
    FetchProgress();

    void OnProgress(const std::string& name, std::uint64_t bytes, std::uint64_t size) override;
    void OnFile(const ftp::FileReport& file) override;
    void OnNote(const std::string& text) override;
    bool Cancelled() override;

    /// Removes the line of progress.
    void Clear() { m_line.Clear(); }

  private:
    bool m_terminal;
    ProgressLine m_line;
};

}  // namespace zel::cli
