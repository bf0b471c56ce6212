#pragma once

#include <nlohmann/json_fwd.hpp>

#include "host/ftp/fetch.h"
#include "programs/cli/progress_line.h"

namespace zel::cli {

/// Prints a line per file, and on a terminal also the progress of the current file; or a JSON object per file. An
/// interrupt cancels the fetch.
class FetchProgress : public ftp::FetchObserver {
  public:
    explicit FetchProgress(bool json);

    void OnProgress(const std::string& name, std::uint64_t bytes, std::uint64_t size) override;
    void OnFile(const ftp::FileReport& file) override;
    void OnNote(const std::string& text) override;
    bool Cancelled() override;

    /// Removes the line of progress.
    void Clear() { m_line.Clear(); }

  private:
    const bool m_json;
    const bool m_terminal;
    ProgressLine m_line;
};

/// The last line of fetch --json; described in docs/json.md.
nlohmann::ordered_json FetchSummaryJson(const ftp::FetchReport& report);

}  // namespace zel::cli
