#include "host/ftp/fetch.h"

#include <algorithm>
#include <optional>
#include <set>

#include "base/fold_case.h"
#include "host/ftp/fetch_file.h"
#include "host/ftp/list_directory.h"
#include "host/ftp/remote_name.h"
#include "host/ftp/safe_directory.h"
#include "module/message/format/message_loader.h"

namespace zel::ftp {

namespace {

constexpr std::string_view kMessages = "MESSAGES", kMachine = "MACHINE";

// Where the remote directory's messages and fonts are.
enum class Layout {
    // In its subdirectories MESSAGES and MACHINE.
    kDisk,
    // It is MESSAGES, and MACHINE is beside it.
    kBeside,
    // Both in the directory itself.
    kTogether,
};

// A directory of the server with its listing, and the local directory that its files go to.
struct DirectoryPair {
    std::string remote;
    Listing listing;
    std::string shown;  // prefix of names in reports
    std::optional<SafeDirectory> local;
};

// The numbers of the fonts that a message uses.
std::set<unsigned> FontsOf(const std::vector<std::uint8_t>& bytes) {
    message::ByteSource source{std::span(bytes)};
    message::LoadedMessage message;
    if (message::LoadMessage(source, message) == message::MessageOutcome::kRgbaFile || !message.header) return {};
    std::set<unsigned> fonts;
    for (const std::uint16_t number : message.header->font_numbers) {
        if (number != kNoFont) fonts.insert(number);
    }
    return fonts;
}

class Fetcher {
  public:
    Fetcher(FtpSession& session, const FetchRequest& request, FetchObserver& observer)
        : m_session(session), m_request(request), m_observer(observer) {}

    FetchReport Run() {
        try {
            if (Open()) FetchChosen();
            if (m_report.failure.empty() && m_request.fonts) FetchFonts();
        } catch (const LocalError& error) {
            m_report.failure = m_request.to.string() + ": " + error.what();
        }
        m_report.cancelled = m_observer.Cancelled();
        return std::move(m_report);
    }

  private:
    bool Fail(std::string reason) {
        m_report.failure = std::move(reason);
        return false;
    }

    // A directory of the server, to show.
    std::string Where(const std::string& directory) const {
        if (directory.empty()) return m_request.source;
        return m_request.source + (directory.starts_with('/') ? "" : "/") + Printable(directory);
    }

    std::optional<Listing> List(const std::string& directory) {
        Listing listing;
        const FtpResult result = ListDirectory(m_session, directory, m_request.listing_limits,
                                               m_request.max_attempts_without_progress, listing);
        if (result.Done()) return listing;
        Fail(Where(directory) + ": " + result.reason);
        return std::nullopt;
    }

    void Note(const Listing& listing, const std::string& directory) {
        const std::string where = Where(directory);
        if (listing.rejected != 0) {
            m_observer.OnNote(where + ": " + std::to_string(listing.rejected) +
                              " names ignored that are not valid for a message or font, such as " +
                              listing.first_rejected);
        }
        if (listing.truncated) m_observer.OnNote(where + ": the listing is too long; its end was ignored");
    }

    // Determines the layout and lists the messages.
    bool Open() {
        std::optional<Listing> listing = List(m_request.directory);
        if (!listing) return false;
        const ListingEntry* const messages = listing->FindDirectory(kMessages);
        if (messages != nullptr) {
            const ListingEntry* const machine = listing->FindDirectory(kMachine);
            m_font_directory = Below(m_request.directory, machine != nullptr ? machine->name : kMachine);
            m_messages.remote = Below(m_request.directory, messages->name);
            listing = List(m_messages.remote);
            if (!listing) return false;
            m_layout = Layout::kDisk;
        } else {
            m_messages.remote = m_request.directory;
            if (base::EqualsFolded(LastPart(m_request.directory), kMessages)) {
                const bool lower = LastPart(m_request.directory).front() == 'm';
                m_font_directory = Sibling(m_request.directory, lower ? "machine" : kMachine);
                m_layout = Layout::kBeside;
            }
        }
        m_messages.listing = std::move(*listing);
        Note(m_messages.listing, m_messages.remote);
        return true;
    }

    // The local directory with its own name.
    std::filesystem::path Local() const {
        std::filesystem::path to = std::filesystem::absolute(m_request.to).lexically_normal();
        return to.has_filename() ? to : to.parent_path();
    }

    // Whether the local directory is to be the MESSAGES of a disk, as the remote one is.
    bool IsLocalMessages() const {
        return m_layout == Layout::kBeside && base::EqualsFolded(Local().filename().string(), kMessages);
    }

    void OpenLocal() {
        if (m_layout == Layout::kTogether || IsLocalMessages()) {
            m_messages.local = SafeDirectory(m_request.to);
        } else {
            m_messages.shown = std::string(kMessages) + "/";
            m_messages.local = SafeDirectory(m_request.to).Below(std::string(kMessages));
        }
    }

    void FetchChosen() {
        std::vector<ListingEntry> chosen;
        for (const ListingEntry* entry : m_request.selection.Choose(m_messages.listing)) chosen.push_back(*entry);
        if (chosen.empty() && !m_request.selection.IsMany() && HidesDots(m_messages.listing)) {
            chosen.push_back({.name = m_request.selection.UsualName(), .kind = EntryKind::kUnknown});
        }
        if (chosen.empty()) {
            Fail(Where(m_messages.remote) + ": none of the requested files exists");
            return;
        }
        OpenLocal();
        for (const unsigned long number : m_request.selection.MissingNumbers(m_messages.listing))
            Report({.name = m_messages.shown + UsualNameOf(number), .reason = "not on the server"});
        for (const ListingEntry& entry : chosen) {
            if (m_observer.Cancelled()) return;
            if (!FetchInto(m_messages, entry) || !m_request.fonts) continue;
            const auto bytes = m_messages.local->Read(entry.name, m_request.file_limit);
            if (bytes) {
                m_fonts.merge(FontsOf(*bytes));
            } else {
                m_observer.OnNote(m_messages.shown + entry.name +
                                  ": the local file can't be read back, so the fonts that it uses aren't known");
            }
        }
    }

    // Some servers list no names with a leading dot, although they send the files.
    static bool HidesDots(const Listing& listing) {
        return std::ranges::none_of(listing.entries, [](const auto& entry) { return entry.name.starts_with('.'); });
    }

    // Whether the file exists locally afterwards.
    bool FetchInto(const DirectoryPair& directory, const ListingEntry& entry) {
        const FilePlace place{directory.remote, *directory.local, directory.shown};
        return Report(FetchFile(m_session, m_request, m_observer, place, entry));
    }

    bool Report(FileReport report) {
        m_observer.OnFile(report);
        m_report.files.push_back(std::move(report));
        const FileOutcome outcome = m_report.files.back().outcome;
        return outcome != FileOutcome::kFailed && outcome != FileOutcome::kMissing;
    }

    void FetchFonts() {
        if (m_fonts.empty() || m_observer.Cancelled()) return;
        if (m_layout == Layout::kTogether) {
            FetchFontsFrom(m_messages);
            return;
        }
        DirectoryPair machine;
        machine.remote = m_font_directory;
        machine.shown = std::string(kMachine) + "/";
        Listing listing;
        const FtpResult result = ListDirectory(m_session, machine.remote, m_request.listing_limits,
                                               m_request.max_attempts_without_progress, listing);
        if (result.error == FtpError::kNoDirectory || result.error == FtpError::kRefused) {
            m_observer.OnNote(Where(machine.remote) + ": " + result.reason + "; no fonts were fetched");
        } else if (!result.Done()) {
            Fail(Where(machine.remote) + ": " + result.reason);
        }
        if (!result.Done()) return;
        machine.listing = std::move(listing);
        Note(machine.listing, machine.remote);
        machine.local = OpenMachine();
        FetchFontsFrom(machine);
    }

    SafeDirectory OpenMachine() const {
        return SafeDirectory(IsLocalMessages() ? Local().parent_path() : m_request.to).Below(std::string(kMachine));
    }

    void FetchFontsFrom(const DirectoryPair& directory) {
        for (const unsigned number : m_fonts) {
            if (m_observer.Cancelled()) return;
            const std::string name = UsualNameOf(number);
            const ListingEntry* entry = directory.listing.Find(name);
            if (entry == nullptr) entry = directory.listing.Find("." + std::to_string(number));
            if (entry != nullptr && entry->kind != EntryKind::kDirectory) {
                if (!IsReported(directory.shown + entry->name)) FetchInto(directory, *entry);
            } else if (HidesDots(directory.listing)) {
                FetchInto(directory, {.name = name, .kind = EntryKind::kUnknown});
            } else {
                Report(
                    {.name = directory.shown + name, .outcome = FileOutcome::kMissing, .reason = "not on the server"});
            }
        }
    }

    bool IsReported(const std::string& name) const {
        return std::ranges::any_of(m_report.files, [&](const FileReport& file) { return file.name == name; });
    }

    FtpSession& m_session;
    const FetchRequest& m_request;
    FetchObserver& m_observer;
    FetchReport m_report;
    Layout m_layout = Layout::kTogether;
    DirectoryPair m_messages;
    std::string m_font_directory;  // on the server
    std::set<unsigned> m_fonts;    // used by the messages
};

}  // namespace

std::size_t FetchReport::Count(FileOutcome outcome) const {
    return static_cast<std::size_t>(std::ranges::count(files, outcome, &FileReport::outcome));
}

std::string FetchReport::Summary() const {
    struct Label {
        FileOutcome outcome;
        const char* text;
    };
    constexpr Label kLabels[] = {{FileOutcome::kFetched, "fetched"},         {FileOutcome::kResumed, "resumed"},
                                 {FileOutcome::kOverwritten, "overwritten"}, {FileOutcome::kSkipped, "skipped"},
                                 {FileOutcome::kMissing, "missing"},         {FileOutcome::kFailed, "failed"}};
    std::string text;
    for (const auto& [outcome, label] : kLabels) {
        const std::size_t count = Count(outcome);
        if (count != 0) text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + label;
    }
    return text.empty() ? "nothing fetched" : text;
}

FetchReport RunFetch(FtpSession& session, const FetchRequest& request, FetchObserver& observer) {
    return Fetcher(session, request, observer).Run();
}

}  // namespace zel::ftp
