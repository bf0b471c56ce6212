#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "host/recorder/batch_recorder.h"
#include "programs/cli/progress_line.h"

namespace zel::cli {

/// Shows the progress of a batch and counts its results: in one line that is redrawn on a terminal, otherwise in a line
/// per existing message, which is text or JSON. Must be used by one thread at a time.
class BatchProgress {
  public:
    enum class Style { kNothing, kLines, kOneLine, kJson };

    /// @param disk   as the user gave it.
    /// @param total  numbers in the range.
    BatchProgress(Style style, std::string disk, int total);

    void Add(const recorder::RecordedItem& item);
    /// Counts a number that is already recorded.
    void AddSkipped() { ++m_unchanged; }

    /// Prints the summary.
    void Close();

    std::size_t FailureCount() const noexcept { return m_failures.size(); }
    /// The reason of the first failure; there must be one.
    const std::string& FirstFailure() const { return m_failures.front().second; }

    /// The summary as JSON.
    nlohmann::ordered_json Report() const;

  private:
    void DrawLine();
    std::string Counts() const;

    const Style m_style;
    const std::string m_disk;
    const int m_total;
    const std::chrono::steady_clock::time_point m_begin;
    ProgressLine m_line;
    int m_recorded = 0, m_replaced = 0, m_not_inserted = 0, m_missing = 0, m_unchanged = 0;
    std::vector<std::pair<int, std::string>> m_failures;               // number and reason
    std::vector<std::pair<int, std::vector<std::string>>> m_warnings;  // number and lines
};

/// kJson with --json, kNothing if standard output contains the trace, kOneLine on a terminal, else kLines.
BatchProgress::Style StyleFor(bool json, const std::optional<std::string>& trace);

}  // namespace zel::cli
