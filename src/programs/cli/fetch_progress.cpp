#include "programs/cli/fetch_progress.h"

#include "inspect/words.h"
#include "programs/cli/diagnostics.h"
#include "programs/cli/interrupt.h"

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

}  // namespace

FetchProgress::FetchProgress() : m_terminal(CanRedraw() && !IsSilent()) {}

void FetchProgress::OnProgress(const std::string& name, std::uint64_t bytes, std::uint64_t size) {
    if (!m_terminal || !m_line.IsDue()) return;
    m_line.Draw(name + "  " + inspect::Number(bytes) + (size != 0 ? " of " + inspect::Number(size) : "") + " bytes");
}

void FetchProgress::OnFile(const ftp::FileReport& file) {
    Clear();
    PrintLine(LineOf(file));
}

void FetchProgress::OnNote(const std::string& text) {
    Clear();
    PrintNote(text);
}

bool FetchProgress::Cancelled() {
    return WasInterrupted();
}

}  // namespace zel::cli
