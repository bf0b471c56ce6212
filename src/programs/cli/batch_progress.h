#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "host/recorder/batch_recorder.h"
#include "programs/cli/number_selection.h"
#include "programs/cli/progress_line.h"

namespace zel::cli {

/// Results of a batch, as numbers of messages.
struct BatchCounts {
    int recorded = 0, replaced = 0, not_inserted = 0, missing = 0, unchanged = 0, failed = 0;

    BatchCounts& operator+=(const BatchCounts& other) noexcept;
    /// Such as "3 imported, 1 missing, 0 failed".
    /// @param with_missing  whether the missing numbers were asked for.
    std::string Text(bool with_missing) const;
};

/// Shows the progress of a batch and counts its results: in one line that is redrawn on a terminal, otherwise in a line
/// per existing message, which is text or JSON. Must be used by one thread at a time.
class BatchProgress {
  public:
    enum class Style { kNothing, kLines, kOneLine, kJson };

    /// @param disk  as the user gave it.
    BatchProgress(Style style, std::string disk, const NumberSelection& numbers);

    /// Prints the disk, which the following lines are about.
    void PrintHeading() const;

    void Add(const recorder::RecordedItem& item);
    /// Counts a number that is already recorded.
    void AddUnchanged(int number);

    /// Prints the messages with warnings, the failures and the counts.
    void Close();

    const BatchCounts& Counts() const noexcept { return m_counts; }
    std::size_t FailureCount() const noexcept { return m_failures.size(); }
    /// The reason of the first failure; there must be one.
    const std::string& FirstFailure() const { return m_failures.front().second; }
    /// The number of messages with warnings.
    std::size_t WarningCount() const noexcept { return m_warnings.size(); }

    /// The summary as JSON.
    nlohmann::ordered_json Report() const;

  private:
    void DrawLine();
    void PrintFailures() const;
    void PrintWarnings() const;

    const Style m_style;
    const std::string m_disk;
    /// Numbers of the selection, and whether it is all of them.
    const int m_total;
    const bool m_is_all;
    const std::chrono::steady_clock::time_point m_begin;
    ProgressLine m_line;
    BatchCounts m_counts;
    std::vector<std::pair<int, std::string>> m_failures;               // number and reason
    std::vector<std::pair<int, std::vector<std::string>>> m_warnings;  // number and lines
};

/// kJson with --json, kNothing if standard output is reserved or the command is quiet, kOneLine on a terminal that can
/// redraw a line, else kLines.
BatchProgress::Style BatchStyle(bool json);

}  // namespace zel::cli
