#pragma once

#include <chrono>

#include "host/ftp/fetch.h"

namespace zel::cli {

/// Tells a person how a fetch goes: on a terminal one line that is drawn over again, otherwise a line for each file.
/// Ctrl-C ends it.
class FetchProgress : public ftp::FetchObserver {
  public:
    FetchProgress();

    void OnProgress(const std::string& name, std::uint64_t bytes, std::uint64_t size) override;
    void OnFile(const ftp::FileReport& file) override;
    void OnNote(const std::string& text) override;
    bool Cancelled() override;

    /// Takes the drawn line away.
    void Clear();

  private:
    bool m_terminal;
    bool m_drawn = false;
    std::chrono::steady_clock::time_point m_last;
};

}  // namespace zel::cli
