#include "programs/cli/batch_progress.h"

#include <cmath>
#include <cstdio>
#include <iostream>

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

BatchProgress::Style StyleFor(bool json, const std::optional<std::string>& trace) {
    if (json) return BatchProgress::Style::kJson;
    if (trace == "-") return BatchProgress::Style::kNothing;
    return IsTerminal() ? BatchProgress::Style::kOneLine : BatchProgress::Style::kLines;
}

BatchProgress::BatchProgress(Style style, std::string disk, int total)
    : m_style(style), m_disk(std::move(disk)), m_total(total), m_begin(std::chrono::steady_clock::now()) {}

void BatchProgress::Add(const recorder::RecordedItem& recorded) {
    const host::BatchItem& item = recorded.item;
    std::string line = base::NumberedName(item.number);
    switch (item.outcome) {
        case host::ItemOutcome::kRecorded:
            ++m_recorded;
            m_replaced += recorded.replaced ? 1 : 0;
            line += recorded.replaced ? " imported, replaced" : " imported";
            break;
        case host::ItemOutcome::kNotInserted:
            ++m_not_inserted;
            line += " an RGBA picture, not inserted";
            break;
        case host::ItemOutcome::kMissing:
            ++m_missing;
            line.clear();
            break;
        case host::ItemOutcome::kFailed:
            m_failures.emplace_back(item.number, item.reason);
            line += " failed: " + item.reason;
            break;
    }
    if (!recorded.warnings.empty()) m_warnings.emplace_back(item.number, recorded.warnings);
    for (const std::string& warning : recorded.warnings) line += "; " + warning;
    if (m_style == Style::kJson && !line.empty()) PrintJson(ItemJson(m_disk, recorded));
    if (m_style == Style::kLines && !line.empty()) PrintLine(line);
    if (m_style == Style::kOneLine) DrawLine();
}

std::string BatchProgress::Counts() const {
    std::string text = std::to_string(m_recorded) + " imported, " + std::to_string(m_missing) + " missing, " +
                       std::to_string(m_failures.size()) + " failed";
    if (m_unchanged > 0) text += ", " + std::to_string(m_unchanged) + " unchanged";
    if (m_replaced > 0) text += ", " + std::to_string(m_replaced) + " replaced";
    if (m_not_inserted > 0) text += ", " + std::to_string(m_not_inserted) + " not inserted";
    return text;
}

void BatchProgress::DrawLine() {
    if (!m_line.IsDue()) return;
    const int done = m_recorded + m_not_inserted + m_missing + static_cast<int>(m_failures.size());
    const int left = m_total - m_unchanged - done;
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - m_begin).count();
    const double rate = done / std::max(seconds, 1e-6);
    m_line.Draw(std::to_string(m_unchanged + done) + " of " + std::to_string(m_total) + ": " + Counts() + "; " +
                std::to_string(std::lround(rate)) + " per second, " + Clock(left / std::max(rate, 1e-6)) + " left");
}

void BatchProgress::Close() {
    if (m_style == Style::kNothing || m_style == Style::kJson) return;
    if (m_style == Style::kOneLine) {
        m_line.Clear();
        for (std::size_t i = 0; i < m_failures.size() && i < kMaxShownReasons; ++i) {
            PrintLine(base::NumberedName(m_failures[i].first) + " failed: " + m_failures[i].second);
        }
        if (m_failures.size() > kMaxShownReasons) std::cout << m_failures.size() - kMaxShownReasons << " more failed\n";
        if (!m_warnings.empty()) std::cout << m_warnings.size() << " with warnings\n";
    }
    std::cout << Counts() << std::endl;
}

nlohmann::ordered_json BatchProgress::Report() const {
    nlohmann::ordered_json report = {{"imported", m_recorded},
                                     {"replaced", m_replaced},
                                     {"missing", m_missing},
                                     {"failed", m_failures.size()},
                                     {"unchanged", m_unchanged},
                                     {"not_inserted", m_not_inserted},
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
