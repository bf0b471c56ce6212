#include "programs/cli/batch_progress.h"

#include <cstdio>
#include <iostream>

#include <nlohmann/json.hpp>
#include <unistd.h>

#include "programs/cli/drawing_pace.h"

namespace zel::cli {

namespace {

constexpr std::size_t kMostReasons = 20;

std::string Name(int number) {
    char name[16];
    std::snprintf(name, sizeof name, ".%04d", number);
    return name;
}

std::string Clock(double seconds) {
    const long whole = static_cast<long>(seconds + 0.5);
    char text[32];
    std::snprintf(text, sizeof text, "%ld:%02ld", whole / 60, whole % 60);
    return text;
}

}  // namespace

BatchProgress::Show HowToShow(const std::optional<std::string>& trace) {
    if (trace == "-") return BatchProgress::Show::kNothing;
    return isatty(STDOUT_FILENO) == 1 ? BatchProgress::Show::kOneLine : BatchProgress::Show::kLines;
}

BatchProgress::BatchProgress(Show show, int total)
    : m_show(show), m_total(total), m_begin(std::chrono::steady_clock::now()) {}

void BatchProgress::Hear(const recorder::RecordedItem& heard) {
    const host::BatchItem& item = heard.item;
    std::string line = Name(item.number);
    switch (item.outcome) {
        case host::ItemOutcome::kRecorded:
            ++m_recorded;
            line += " imported";
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
    if (!heard.warnings.empty()) m_warnings.emplace_back(item.number, heard.warnings);
    for (const std::string& warning : heard.warnings) line += "; " + warning;
    if (m_show == Show::kLines && !line.empty()) std::cout << line << std::endl;
    if (m_show == Show::kOneLine) DrawLine();
}

std::string BatchProgress::Counts() const {
    std::string text = std::to_string(m_recorded) + " imported, " + std::to_string(m_missing) + " missing, " +
                       std::to_string(m_failures.size()) + " failed";
    if (m_left_out > 0) text += ", " + std::to_string(m_left_out) + " unchanged";
    if (m_not_inserted > 0) text += ", " + std::to_string(m_not_inserted) + " not inserted";
    return text;
}

void BatchProgress::DrawLine() {
    const auto now = std::chrono::steady_clock::now();
    if (now - m_drawn < kBetweenDrawings) return;
    m_drawn = now;
    const int done = m_recorded + m_not_inserted + m_missing + static_cast<int>(m_failures.size());
    const int left = m_total - m_left_out - done;
    const double seconds = std::chrono::duration<double>(now - m_begin).count();
    const double rate = done / std::max(seconds, 1e-6);
    std::cout << "\r\x1b[K" << m_left_out + done << " of " << m_total << ": " << Counts() << "; "
              << static_cast<long>(rate + 0.5) << " a second, " << Clock(left / std::max(rate, 1e-6)) << " left"
              << std::flush;
}

void BatchProgress::Close() {
    if (m_show == Show::kNothing) return;
    if (m_show == Show::kOneLine) {
        std::cout << "\r\x1b[K";
        for (std::size_t i = 0; i < m_failures.size() && i < kMostReasons; ++i) {
            std::cout << Name(m_failures[i].first) << " failed: " << m_failures[i].second << "\n";
        }
        if (m_failures.size() > kMostReasons) std::cout << m_failures.size() - kMostReasons << " more failed\n";
        if (!m_warnings.empty()) std::cout << m_warnings.size() << " with warnings\n";
    }
    std::cout << Counts() << std::endl;
}

nlohmann::ordered_json BatchProgress::Report() const {
    nlohmann::ordered_json report = {{"imported", m_recorded},
                                     {"missing", m_missing},
                                     {"failed", m_failures.size()},
                                     {"unchanged", m_left_out},
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
