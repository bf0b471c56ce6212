#include "host/ftp/fetch_file.h"

#include <algorithm>
#include <exception>
#include <thread>

#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

// A resumed transfer begins this many bytes before the end of the part, and the repeated bytes are compared. That
// detects a server that starts at the wrong offset, and a file that changed within the resolution of its time.
constexpr std::size_t kOverlap = 1024;

// Ends the fetch of this file.
struct Failure {
    std::string reason;
};

// Receives one transfer: compares the bytes that repeat the end of the part, and appends the rest to it.
class PartReceiver {
  public:
    /// @param limit  size in bytes that the file may not exceed.
    PartReceiver(PartFile& part, std::uint64_t limit) : m_part(part), m_limit(limit), m_overlap(part.Tail(kOverlap)) {}

    std::uint64_t Offset() const { return m_part.Size() - m_overlap.size(); }

    // False stops the transfer. An exception must not pass through the library, so it is kept for RethrowError.
    bool Receive(std::span<const std::uint8_t> bytes) {
        const std::size_t repeated = std::min(bytes.size(), m_overlap.size() - m_compared);
        const auto expected = m_overlap.begin() + static_cast<std::ptrdiff_t>(m_compared);
        m_mismatch = !std::equal(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(repeated), expected) ||
                     bytes.size() - repeated > m_limit - m_part.Size();
        if (m_mismatch) return false;
        m_compared += repeated;
        try {
            m_part.Append(bytes.subspan(repeated));
        } catch (const LocalError&) {
            m_error = std::current_exception();
        }
        return m_error == nullptr;
    }

    void RethrowError() const {
        if (m_error) std::rethrow_exception(m_error);
    }
    // The data does not continue the part, or is longer than the file may be.
    bool Mismatch() const { return m_mismatch; }
    bool OverlapComplete() const { return m_compared == m_overlap.size(); }

  private:
    PartFile& m_part;
    const std::uint64_t m_limit;
    const std::vector<std::uint8_t> m_overlap;
    std::size_t m_compared = 0;
    bool m_mismatch = false;
    std::exception_ptr m_error;
};

// One file. Whatever no further attempt can solve is thrown as a Failure or a LocalError.
class FileFetch {
  public:
    FileFetch(FtpSession& session, const FetchRequest& request, FetchObserver& observer, const FilePlace& place,
              const ListingEntry& entry, FileReport& report)
        : m_session(session),
          m_request(request),
          m_observer(observer),
          m_place(place),
          m_entry(entry),
          m_report(report) {}

    // @param replaces  a file of that name exists.
    void Run(bool replaces) {
        FindFacts();
        m_part = m_place.local.OpenPart(m_entry.name, Key());
        if (m_part->Size() > Limit()) m_part->Reset();
        m_largest_size = m_part->Size();
        const bool has_part = m_part->Size() != 0;
        Transfer();
        m_part->Finish(m_request.overwrite);
        m_report.bytes = m_part->Size();
        m_report.outcome = replaces                   ? FileOutcome::kOverwritten
                           : has_part && !m_restarted ? FileOutcome::kResumed
                                                      : FileOutcome::kFetched;
    }

    void DiscardEmptyPart() {
        if (m_part && m_part->Size() == 0) m_part->Discard();
    }

  private:
    enum class AttemptResult {
        kComplete,
        // The transfer ended early; another may bring the rest.
        kInterrupted,
        // The part belongs to another file, or the server sends from another offset.
        kMismatch,
    };

    void FindFacts() {
        m_facts = {m_entry.size, m_entry.modified};
        if (m_entry.modified.empty() || !m_entry.size) RequestFacts();
        if (m_facts.size.value_or(0) > m_request.file_limit) throw Failure{"too large for a message or a font"};
    }

    void RequestFacts() {
        FileFacts facts;
        FtpResult result;
        for (int attempts = 0; attempts < m_request.max_attempts_without_progress; ++attempts) {
            result = m_session.GetFacts(m_place.directory, m_entry.name, facts);
            if (!IsTemporary(result.error)) break;
            ++m_report.interruptions;
            Pause();
        }
        if (result.Done()) {
            // Some servers report a size only in the listing.
            m_facts = {facts.size ? facts.size : m_entry.size, facts.modified};
        } else if (result.error != FtpError::kRefused || m_entry.kind == EntryKind::kUnknown) {
            throw Failure{result.reason};
        }
    }

    // Without a time a newer file of the same size looks the same, so there is no key.
    std::optional<PartKey> Key() const {
        if (!m_facts.size || m_facts.modified.empty()) return std::nullopt;
        return PartKey{m_request.source + '\n' + m_place.directory, m_entry.name, *m_facts.size, m_facts.modified};
    }

    std::uint64_t Limit() const { return std::min(m_facts.size.value_or(m_request.file_limit), m_request.file_limit); }

    void Pause() const {
        constexpr std::chrono::milliseconds kStep{50};
        for (auto left = m_request.pause; left.count() > 0 && !m_observer.Cancelled(); left -= kStep) {
            std::this_thread::sleep_for(std::min(left, kStep));
        }
    }

    void Transfer() {
        for (;;) {
            if (!Key()) m_part->Reset();
            const std::uint64_t size_before = m_part->Size();
            switch (Attempt()) {
                case AttemptResult::kComplete:
                    return;
                case AttemptResult::kMismatch:
                    Restart(size_before);
                    break;
                case AttemptResult::kInterrupted:
                    CountInterruption();
                    break;
            }
        }
    }

    AttemptResult Attempt() {
        const bool resumes = m_part->Size() != 0;
        PartReceiver receiver(*m_part, Limit());
        m_last = m_session.Fetch(m_place.directory, m_entry.name, receiver.Offset(), [&](auto bytes) {
            if (!receiver.Receive(bytes)) return false;
            m_observer.OnProgress(m_place.shown + m_entry.name, m_part->Size(), m_facts.size.value_or(0));
            return true;
        });
        receiver.RethrowError();
        const bool done = m_last.Done();
        if (receiver.Mismatch() || m_last.error == FtpError::kCannotResume || (done && !receiver.OverlapComplete())) {
            return AttemptResult::kMismatch;
        }
        if (done && (!m_facts.size || m_part->Size() == *m_facts.size)) {
            return resumes && HasChanged() ? AttemptResult::kMismatch : AttemptResult::kComplete;
        }
        if (!done && !IsTemporary(m_last.error)) throw Failure{m_last.reason};
        return AttemptResult::kInterrupted;
    }

    // Whether the remote file has been replaced since the beginning of the part was fetched.
    bool HasChanged() {
        if (!Key()) return false;
        FileFacts now;
        const FtpResult result = m_session.GetFacts(m_place.directory, m_entry.name, now);
        if (result.error == FtpError::kCancelled) throw Failure{result.reason};
        if (!result.Done() || now.modified.empty()) return false;  // then the listing alone gave the time of the key
        if (now.modified == m_facts.modified.substr(0, now.modified.size())) return false;
        m_facts = now;
        return true;
    }

    // Only once, and only if there was a part that may have been wrong.
    void Restart(std::uint64_t size_before) {
        if (size_before == 0 || m_restarted) {
            m_part->Discard();
            throw Failure{"the data does not match the size and time that the server reported"};
        }
        m_restarted = true;
        m_largest_size = 0;
        m_part->Reset();
    }

    void CountInterruption() {
        ++m_report.interruptions;
        const bool progress = m_part->Size() > m_largest_size;
        m_largest_size = std::max(m_largest_size, m_part->Size());
        m_attempts_without_progress = progress ? 0 : m_attempts_without_progress + 1;
        if (m_attempts_without_progress >= m_request.max_attempts_without_progress ||
            ++m_attempts >= m_request.max_attempts) {
            throw Failure{(m_last.Done() ? "the server sends less than the size it reported" : m_last.reason) +
                          "; gave up after several attempts and kept the part for the next run"};
        }
        if (!progress) Pause();
    }

    FtpSession& m_session;
    const FetchRequest& m_request;
    FetchObserver& m_observer;
    const FilePlace& m_place;
    const ListingEntry& m_entry;
    FileReport& m_report;
    FileFacts m_facts;
    std::unique_ptr<PartFile> m_part;
    FtpResult m_last;                  // of the last attempt
    std::uint64_t m_largest_size = 0;  // of the part, in bytes, over all attempts since the last restart
    int m_attempts = 0, m_attempts_without_progress = 0;
    bool m_restarted = false;
};

}  // namespace

FileReport FetchFile(FtpSession& session, const FetchRequest& request, FetchObserver& observer, const FilePlace& place,
                     const ListingEntry& entry) {
    FileReport report{.name = place.shown + entry.name};
    const SafeDirectory::Type existing = place.local.TypeOf(entry.name);
    if (existing == SafeDirectory::Type::kOther) {
        report.reason = "a link or another special file of that name exists";
        return report;
    }
    if (existing == SafeDirectory::Type::kFile && !request.overwrite) {
        report.outcome = FileOutcome::kSkipped;
        return report;
    }
    FileFetch fetch(session, request, observer, place, entry, report);
    try {
        fetch.Run(existing == SafeDirectory::Type::kFile);
    } catch (const Failure& failure) {
        report.reason = failure.reason;
        fetch.DiscardEmptyPart();
    } catch (const LocalError& error) {
        report.reason = error.what();
    }
    return report;
}

}  // namespace zel::ftp
