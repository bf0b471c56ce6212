#include "programs/cli/fetch_progress.h"

#include <iostream>

#include <unistd.h>

#include "inspect/words.h"
#include "programs/cli/arguments.h"
#include "programs/cli/drawing_pace.h"
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

FetchProgress::FetchProgress() : m_terminal(isatty(STDOUT_FILENO) == 1) {}

void FetchProgress::OnProgress(const std::string& name, std::uint64_t bytes, std::uint64_t size) {
    const auto now = std::chrono::steady_clock::now();
    if (!m_terminal || now - m_last < kBetweenDrawings) return;
    m_last = now;
    m_drawn = true;
    std::cout << "\r\x1b[K" << name << "  " << inspect::Number(bytes);
    if (size != 0) std::cout << " of " << inspect::Number(size);
    std::cout << " bytes" << std::flush;
}

void FetchProgress::OnFile(const ftp::FileReport& file) {
    Clear();
    std::cout << LineOf(file) << std::endl;
}

void FetchProgress::OnNote(const std::string& text) {
    Clear();
    SayNote(text);
}

bool FetchProgress::Cancelled() {
    return WasInterrupted();
}

void FetchProgress::Clear() {
    if (m_drawn) std::cout << "\r\x1b[K" << std::flush;
    m_drawn = false;
}

}  // namespace zel::cli
