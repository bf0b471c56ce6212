#include "programs/cli/batch_progress.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include <nlohmann/json.hpp>

#include "base/text.h"
#include "host/document/json_version.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/json_output.h"

namespace zel::cli {

namespace {

constexpr std::size_t kMaxShownReasons = 20;

std::string Clock(double seconds) {
    const long whole = std::lround(seconds);
    char text[32];
    std::snprintf(text, sizeof text, "%ld:%02ld", whole / 60, whole % 60);
    return text;
}

const char* OutcomeName(host::ItemOutcome outcome) noexcept {
    switch (outcome) {
        case host::ItemOutcome::kRecorded:
            return "imported";
        case host::ItemOutcome::kNotInserted:
            return "not_inserted";
        case host::ItemOutcome::kMissing:
            return "missing";
        case host::ItemOutcome::kFailed:
            break;
    }
    return "failed";
}

nlohmann::ordered_json ItemJson(const std::string& disk, const recorder::RecordedItem& recorded) {
    return {{"version", document::kJsonVersion},
            {"type", "message"},
            {"disk", disk},
            {"number", recorded.item.number},
            {"outcome", OutcomeName(recorded.item.outcome)},
            {"replaced", recorded.replaced},
            {"reason", TextOrNull(recorded.item.reason)},
            {"warnings", recorded.warnings}};
}

}  // namespace

BatchProgress::Style BatchStyle(bool json) {
    if (json) return BatchProgress::Style::kJson;
    if (IsSilent()) return BatchProgress::Style::kNothing;
    return CanRedraw() && !IsVerbose() ? BatchProgress::Style::kOneLine : BatchProgress::Style::kLines;
}

BatchCounts& BatchCounts::operator+=(const BatchCounts& other) noexcept {
    recorded += other.recorded;
    replaced += other.replaced;
    not_inserted += other.not_inserted;
    missing += other.missing;
    unchanged += other.unchanged;
    failed += other.failed;
    return *this;
}

std::string BatchCounts::Text(bool with_missing) const {
    std::string text = std::to_string(recorded) + " imported";
    if (with_missing) text += ", " + std::to_string(missing) + " missing";
    text += ", " + std::to_string(failed) + " failed";
    if (unchanged > 0) text += ", " + std::to_string(unchanged) + " unchanged";
    if (replaced > 0) text += ", " + std::to_string(replaced) + " replaced";
    if (not_inserted > 0) text += ", " + std::to_string(not_inserted) + " not inserted";
    return text;
}

BatchProgress::BatchProgress(Style style, std::string disk, const NumberSelection& numbers)
    : m_style(style),
      m_disk(std::move(disk)),
      m_total(numbers.Count()),
      m_is_all(numbers.IsAll()),
      m_begin(std::chrono::steady_clock::now()) {}

void BatchProgress::PrintHeading() const {
    if (m_style == Style::kLines || m_style == Style::kOneLine) PrintLine(m_disk + ":");
}

void BatchProgress::Add(const recorder::RecordedItem& recorded) {
    const host::BatchItem& item = recorded.item;
    std::string line = base::NumberedName(item.number);
    switch (item.outcome) {
        case host::ItemOutcome::kRecorded:
            ++m_counts.recorded;
            m_counts.replaced += recorded.replaced ? 1 : 0;
            line += recorded.replaced ? " imported, replaced" : " imported";
            break;
        case host::ItemOutcome::kNotInserted:
            ++m_counts.not_inserted;
            line += " an RGBA picture, not inserted";
            break;
        case host::ItemOutcome::kMissing:
            ++m_counts.missing;
            if (IsVerbose() && !m_is_all) {
                line += " missing";
            } else {
                line.clear();
            }
            break;
        case host::ItemOutcome::kFailed:
            ++m_counts.failed;
            m_failures.emplace_back(item.number, item.reason);
            line += " failed: " + item.reason;
            break;
    }
    if (!recorded.warnings.empty()) m_warnings.emplace_back(item.number, recorded.warnings);
    for (const std::string& warning : recorded.warnings) line += "; " + warning;
    if (m_style == Style::kJson && item.outcome != host::ItemOutcome::kMissing) PrintJson(ItemJson(m_disk, recorded));
    if (m_style == Style::kLines && !line.empty()) PrintLine(line);
    if (m_style == Style::kOneLine) DrawLine();
}

void BatchProgress::AddUnchanged(int number) {
    ++m_counts.unchanged;
    if (IsVerbose() && m_style == Style::kLines) PrintLine(base::NumberedName(number) + " unchanged");
}

void BatchProgress::DrawLine() {
    if (!m_line.IsDue()) return;
    const int done = m_counts.recorded + m_counts.not_inserted + m_counts.missing + m_counts.failed;
    const int left = m_total - m_counts.unchanged - done;
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - m_begin).count();
    const double rate = done / std::max(seconds, 1e-6);
    m_line.Draw(std::to_string(m_counts.unchanged + done) + " of " + std::to_string(m_total) + ": " +
                m_counts.Text(!m_is_all) + "; " + std::to_string(std::lround(rate)) + " per second, " +
                Clock(left / std::max(rate, 1e-6)) + " left");
}

void BatchProgress::PrintFailures() const {
    for (std::size_t i = 0; i < m_failures.size() && i < kMaxShownReasons; ++i)
        PrintLine(base::NumberedName(m_failures[i].first) + " failed: " + m_failures[i].second);
    if (m_failures.size() > kMaxShownReasons)
        PrintLine(std::to_string(m_failures.size() - kMaxShownReasons) + " more failed");
}

void BatchProgress::PrintWarnings() const {
    if (m_warnings.empty()) return;
    PrintLine(base::Counted(m_warnings.size(), "message") + " with warnings:");
    for (const auto& [number, warnings] : m_warnings) {
        std::string line;
        for (const std::string& warning : warnings) line += (line.empty() ? "  " : "; ") + warning;
        PrintLine("  " + base::NumberedName(number) + line);
    }
}

void BatchProgress::Close() {
    if (m_style == Style::kNothing || m_style == Style::kJson) return;
    m_line.Clear();
    // Otherwise each has had its line.
    if (m_style == Style::kOneLine) PrintFailures();
    PrintWarnings();
    PrintLine(m_counts.Text(!m_is_all));
}

nlohmann::ordered_json BatchProgress::Report() const {
    nlohmann::ordered_json report = {{"imported", m_counts.recorded},
                                     {"replaced", m_counts.replaced},
                                     {"missing", m_counts.missing},
                                     {"failed", m_failures.size()},
                                     {"unchanged", m_counts.unchanged},
                                     {"not_inserted", m_counts.not_inserted},
                                     {"failures", nlohmann::ordered_json::array()},
                                     {"warnings", nlohmann::ordered_json::array()}};
    for (const auto& [number, reason] : m_failures) {
        report["failures"].push_back({{"number", number}, {"reason", reason}});
    }
    for (const auto& [number, lines] : m_warnings) {
        report["warnings"].push_back({{"number", number}, {"texts", lines}});
    }
    return report;
}

}  // namespace zel::cli
