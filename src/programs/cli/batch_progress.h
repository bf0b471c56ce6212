#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "host/recorder/batch_recorder.h"

namespace zel::cli {

/// Tells a person how a batch goes, and sums it up: on a terminal one line that is drawn over again, otherwise a line
/// for each message that is there. Heard on one thread at a time.
class BatchProgress {
  public:
    enum class Show { kNothing, kLines, kOneLine };

    /// @param total  numbers in the range.
    BatchProgress(Show show, int total);

    void Hear(const recorder::RecordedItem& item);
    /// A number that was left out, as it is recorded already.
    void LeftOut() { ++m_left_out; }

    /// The lines at the end.
    void Close();

    std::size_t FailureCount() const noexcept { return m_failures.size(); }
    /// The first failure's reason; only when there is one.
    const std::string& FirstFailure() const { return m_failures.front().second; }

    /// The same for programs.
    nlohmann::ordered_json Report() const;

  private:
    void DrawLine();
    std::string Counts() const;

    const Show m_show;
    const int m_total;
    const std::chrono::steady_clock::time_point m_begin;
    std::chrono::steady_clock::time_point m_drawn;
    int m_recorded = 0, m_not_inserted = 0, m_missing = 0, m_left_out = 0;
    std::vector<std::pair<int, std::string>> m_failures;               // number and reason
    std::vector<std::pair<int, std::vector<std::string>>> m_warnings;  // number and lines
};

/// Nothing when standard output holds a trace, one line on a terminal, else lines.
BatchProgress::Show HowToShow(const std::optional<std::string>& trace);

}  // namespace zel::cli
