#include "programs/cli/fetch_progress.h"

#include <nlohmann/json.hpp>

#include "host/document/json_version.h"
#include "inspect/words.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/interrupt.h"
#include "programs/cli/json_output.h"

namespace zel::cli {

namespace {

std::string LineOf(const ftp::FileReport& file) {
    const auto bytes = [&] {
        return ", " + inspect::Count(file.bytes, "byte") +
               (file.interruptions == 0
                    ? ""
                    : ", after " + inspect::Count(static_cast<std::uint64_t>(file.interruptions), "interruption"));
    };
    switch (file.outcome) {
        case ftp::FileOutcome::kFetched:
            return file.name + " fetched" + bytes();
        case ftp::FileOutcome::kResumed:
            return file.name + " resumed" + bytes();
        case ftp::FileOutcome::kOverwritten:
            return file.name + " overwritten" + bytes();
        case ftp::FileOutcome::kSkipped:
            return file.name + " skipped: it exists already";
        case ftp::FileOutcome::kMissing:
            return file.name + " missing: " + file.reason;
        case ftp::FileOutcome::kFailed:
            break;
    }
    return file.name + " failed: " + file.reason;
}

const char* OutcomeName(ftp::FileOutcome outcome) noexcept {
    switch (outcome) {
        case ftp::FileOutcome::kFetched:
            return "fetched";
        case ftp::FileOutcome::kResumed:
            return "resumed";
        case ftp::FileOutcome::kOverwritten:
            return "overwritten";
        case ftp::FileOutcome::kSkipped:
            return "skipped";
        case ftp::FileOutcome::kMissing:
            return "missing";
        case ftp::FileOutcome::kFailed:
            break;
    }
    return "failed";
}

nlohmann::ordered_json FileJson(const ftp::FileReport& file) {
    return {{"version", document::kJsonVersion},    {"type", "file"},      {"name", file.name},
            {"outcome", OutcomeName(file.outcome)}, {"bytes", file.bytes}, {"interruptions", file.interruptions},
            {"reason", TextOrNull(file.reason)}};
}

}  // namespace

nlohmann::ordered_json FetchSummaryJson(const ftp::FetchReport& report) {
    nlohmann::ordered_json json = {{"version", document::kJsonVersion}, {"type", "summary"}};
    for (const ftp::FileOutcome outcome :
         {ftp::FileOutcome::kFetched, ftp::FileOutcome::kResumed, ftp::FileOutcome::kOverwritten,
          ftp::FileOutcome::kSkipped, ftp::FileOutcome::kMissing, ftp::FileOutcome::kFailed}) {
        json[OutcomeName(outcome)] = report.Count(outcome);
    }
    json["cancelled"] = report.cancelled;
    json["failure"] = TextOrNull(report.failure);
    return json;
}

FetchProgress::FetchProgress(bool json) : m_json(json), m_terminal(CanRedraw() && !IsSilent()) {}

void FetchProgress::OnProgress(const std::string& name, std::uint64_t bytes, std::uint64_t size) {
    if (!m_terminal || !m_line.IsDue()) return;
    m_line.Draw(name + "  " + inspect::Number(bytes) + (size != 0 ? " of " + inspect::Number(size) : "") + " bytes");
}

void FetchProgress::OnFile(const ftp::FileReport& file) {
    Clear();
    m_json ? PrintJson(FileJson(file)) : PrintLine(LineOf(file));
}

void FetchProgress::OnNote(const std::string& text) {
    Clear();
    PrintNote(text);
}

bool FetchProgress::Cancelled() {
    return WasInterrupted();
}

}  // namespace zel::cli
