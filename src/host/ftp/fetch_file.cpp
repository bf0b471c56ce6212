#include "host/ftp/fetch_file.h"

#include <algorithm>
#include <thread>

#include "host/ftp/remote_name.h"

namespace zel::ftp {

namespace {

// So many bytes of what is there are asked for once more, and compared: a server that begins elsewhere than it was told
// to is noticed, and so is a file that has changed within a second.
constexpr std::size_t kOverlap = 1024;

struct Failure {
    std::string reason;
};

// One file on its way. What can't be mended is thrown as a Failure or a LocalError.
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

    void Run(bool overwrite) {
        LearnFacts();
        m_part = m_place.local.OpenPart(m_entry.name, Key());
        if (m_part->Size() > Limit()) m_part->Reset();
        m_farthest = m_part->Size();
        const bool resumed = m_part->Size() != 0;
        while (!Attempt()) {
        }
        m_part->Finish(overwrite);
        m_report.bytes = m_part->Size();
        m_report.outcome = overwrite && m_was_there ? FileOutcome::kOverwritten
                           : resumed && !m_anew     ? FileOutcome::kResumed
                                                    : FileOutcome::kFetched;
    }

    void SetWasThere() { m_was_there = true; }
    void DropEmptyPart() {
        if (m_part && m_part->Size() == 0) m_part->Discard();
    }

  private:
    void LearnFacts() {
        m_facts = {m_entry.size, m_entry.modified};
        if (m_entry.modified.empty() || !m_entry.size) Ask(m_facts);
        if (m_facts.size.value_or(0) > m_request.file_limit) {
            throw Failure{"larger than a message or a font can be"};
        }
    }

    void Ask(FileFacts& facts) {
        FileFacts told;
        FtpResult result;
        for (int tries = 0; tries < m_request.fruitless_tries; ++tries) {
            result = m_session.Ask(m_place.directory, m_entry.name, told);
            if (!IsPassing(result.error)) break;
            ++m_report.cuts;
            Pause();
        }
        if (result.Done()) {
            // What the listing told of the size is for servers that don't tell it of the file.
            facts = {told.size ? told.size : m_entry.size, told.modified};
        } else if (result.error != FtpError::kRefused || m_entry.kind == EntryKind::kUnknown) {
            Stop(result);
        }
    }

    // Without a time nothing tells a file from a newer one of its size.
    std::optional<PartKey> Key() const {
        if (!m_facts.size || m_facts.modified.empty()) return std::nullopt;
        return PartKey{m_request.source + '\n' + m_place.directory, m_entry.name, *m_facts.size, m_facts.modified};
    }

    std::uint64_t Limit() const { return std::min(m_facts.size.value_or(m_request.file_limit), m_request.file_limit); }

    [[noreturn]] static void Stop(const FtpResult& result) { throw Failure{result.words}; }

    void Pause() const {
        constexpr std::chrono::milliseconds kStep{50};
        for (auto left = m_request.pause; left.count() > 0 && !m_observer.Cancelled(); left -= kStep) {
            std::this_thread::sleep_for(std::min(left, kStep));
        }
    }

    // True when the file is whole.
    bool Attempt() {
        if (!Key()) m_part->Reset();
        const std::uint64_t before = m_part->Size();
        m_expected = m_part->Tail(kOverlap);
        m_compared = 0;
        m_wrong = Wrong::kNothing;
        const FtpResult result = m_session.Fetch(m_place.directory, m_entry.name, before - m_expected.size(),
                                                 [this](auto bytes) { return Take(bytes); });
        if (m_wrong == Wrong::kLocal) throw LocalError(m_local_reason);
        if (m_wrong != Wrong::kNothing || result.error == FtpError::kCannotResume ||
            (result.Done() && m_compared < m_expected.size())) {
            BeginAnew(before);
            return false;
        }
        if (result.Done() && (!m_facts.size || m_part->Size() == *m_facts.size)) return IsStillTheSame(before);
        if (!result.Done() && !IsPassing(result.error)) Stop(result);
        CountCut(m_part->Size() > m_farthest, result);
        m_farthest = std::max(m_farthest, m_part->Size());
        return false;
    }

    // What was added to an earlier part must come from the file that the part came from.
    bool IsStillTheSame(std::uint64_t before) {
        if (before == 0 || !Key()) return true;
        FileFacts now;
        const FtpResult result = m_session.Ask(m_place.directory, m_entry.name, now);
        if (result.error == FtpError::kCancelled) Stop(result);
        // Where the server told the time by the listing alone, the part's key had been made of that.
        if (!result.Done() || now.modified.empty() || now.modified == m_facts.modified.substr(0, now.modified.size())) {
            return true;
        }
        m_facts = now;
        BeginAnew(before);
        return false;
    }

    void BeginAnew(std::uint64_t before) {
        if (before == 0 || m_anew) {
            m_part->Discard();
            throw Failure{"the server sends something else than it told of: not the size that it named"};
        }
        m_anew = true;
        m_farthest = 0;
        m_part->Reset();
    }

    void CountCut(bool progress, const FtpResult& result) {
        ++m_report.cuts;
        m_fruitless = progress ? 0 : m_fruitless + 1;
        const std::string words = result.Done() ? "the server sends less than the size that it named" : result.words;
        if (m_fruitless >= m_request.fruitless_tries || ++m_tries >= m_request.most_tries) {
            throw Failure{words + ", again and again; what came is kept for the next time"};
        }
        if (m_fruitless != 0) Pause();
    }

    bool Take(std::span<const std::uint8_t> bytes) {
        const std::size_t known = std::min(bytes.size(), m_expected.size() - m_compared);
        if (!std::equal(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(known),
                        m_expected.begin() + static_cast<std::ptrdiff_t>(m_compared))) {
            m_wrong = Wrong::kBytes;
            return false;
        }
        m_compared += known;
        bytes = bytes.subspan(known);
        if (bytes.size() > Limit() - m_part->Size()) {
            m_wrong = Wrong::kTooMany;
            return false;
        }
        try {
            m_part->Append(bytes);
        } catch (const LocalError& error) {  // it must not pass through the library
            m_wrong = Wrong::kLocal;
            m_local_reason = error.what();
            return false;
        }
        m_observer.OnProgress(m_place.shown + m_entry.name, m_part->Size(), m_facts.size.value_or(0));
        return true;
    }

    enum class Wrong { kNothing, kBytes, kTooMany, kLocal };

    FtpSession& m_session;
    const FetchRequest& m_request;
    FetchObserver& m_observer;
    const FilePlace& m_place;
    const ListingEntry& m_entry;
    FileReport& m_report;
    FileFacts m_facts;
    std::unique_ptr<PartFile> m_part;
    std::vector<std::uint8_t> m_expected;  // the bytes that come once more
    std::size_t m_compared = 0;
    Wrong m_wrong = Wrong::kNothing;
    std::string m_local_reason;
    std::uint64_t m_farthest = 0;  // bytes that an attempt has come to
    int m_fruitless = 0, m_tries = 0;
    bool m_anew = false, m_was_there = false;
};

}  // namespace

FileReport FetchFile(FtpSession& session, const FetchRequest& request, FetchObserver& observer, const FilePlace& place,
                     const ListingEntry& entry) {
    FileReport report{.name = place.shown + entry.name};
    const SafeDirectory::Has has = place.local.Look(entry.name);
    if (has == SafeDirectory::Has::kOther) {
        report.reason = "a link or something else of that name is there";
        return report;
    }
    if (has == SafeDirectory::Has::kFile && !request.overwrite) {
        report.outcome = FileOutcome::kWasThere;
        return report;
    }
    FileFetch fetch(session, request, observer, place, entry, report);
    if (has == SafeDirectory::Has::kFile) fetch.SetWasThere();
    try {
        fetch.Run(request.overwrite);
    } catch (const Failure& failure) {
        report.reason = failure.reason;
        fetch.DropEmptyPart();
    } catch (const LocalError& error) {
        report.reason = error.what();
    }
    return report;
}

}  // namespace zel::ftp
