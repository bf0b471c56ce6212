#include "host/ftp/fetch.h"

#include <algorithm>
#include <optional>
#include <set>

#include "host/ftp/fetch_file.h"
#include "host/ftp/remote_name.h"
#include "host/ftp/safe_directory.h"
#include "module/message/format/message_loader.h"

namespace zel::ftp {

namespace {

constexpr std::string_view kMessages = "MESSAGES", kMachine = "MACHINE";

// A directory of the server with what it holds, and the local one for it.
struct Side {
    std::string remote;
    Listing listing;
    std::string shown;  // put before names in reports
    std::optional<SafeDirectory> local;
};

// The numbers of the fonts that a message names.
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
    bool Fail(std::string words) {
        m_report.failure = std::move(words);
        return false;
    }

    // A directory of the server, for a person.
    std::string Where(const std::string& directory) const {
        if (directory.empty()) return m_request.source;
        return m_request.source + (directory.starts_with('/') ? "" : "/") + Shown(directory);
    }

    std::optional<Listing> List(const std::string& directory) {
        Listing listing;
        const FtpResult result =
            ListDirectory(m_session, directory, m_request.listing_limits, m_request.fruitless_tries, listing);
        if (result.Done()) return listing;
        Fail(Where(directory) + ": " + result.words);
        return std::nullopt;
    }

    void Note(const Listing& listing, const std::string& directory) {
        const std::string where = Where(directory);
        if (listing.refused != 0) {
            m_observer.OnNote(where + ": " + std::to_string(listing.refused) +
                              " names that no message or font can have, such as " + listing.first_refused);
        }
        if (listing.cut) m_observer.OnNote(where + ": the listing is too long; its end is left out");
    }

    // Finds out how the two sides are laid out.
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
            if (SameName(LastPart(m_request.directory), kMessages)) {
                const bool lower = LastPart(m_request.directory).front() == 'm';
                m_font_directory = Sibling(m_request.directory, lower ? "machine" : kMachine);
                m_layout = Layout::kBeside;
            }
        }
        m_messages.listing = std::move(*listing);
        Note(m_messages.listing, m_messages.remote);
        return true;
    }

    void OpenLocal() {
        const SafeDirectory top(m_request.to);
        if (m_layout == Layout::kDisk) {
            m_messages.shown = std::string(kMessages) + "/";
            m_messages.local = top.Below(std::string(kMessages));
        } else {
            m_messages.local = SafeDirectory(m_request.to);
        }
    }

    void FetchChosen() {
        std::vector<ListingEntry> chosen;
        for (const ListingEntry* entry : m_request.selection.Choose(m_messages.listing)) chosen.push_back(*entry);
        if (chosen.empty() && !m_request.selection.IsMany() && HidesDots(m_messages.listing)) {
            chosen.push_back({.name = m_request.selection.UsualName(), .kind = EntryKind::kUnknown});
        }
        if (chosen.empty()) {
            Fail(Where(m_messages.remote) + ": nothing of what was asked for is there");
            return;
        }
        OpenLocal();
        for (const ListingEntry& entry : chosen) {
            if (m_observer.Cancelled()) return;
            if (!FetchInto(m_messages, entry) || !m_request.fonts) continue;
            const auto bytes = m_messages.local->Read(entry.name, m_request.file_limit);
            if (bytes) m_fonts.merge(FontsOf(*bytes));
        }
    }

    // Some servers show no name that begins with a dot, though they give the file.
    static bool HidesDots(const Listing& listing) {
        return std::ranges::none_of(listing.entries, [](const auto& entry) { return entry.name.starts_with('.'); });
    }

    // True when the file is there now.
    bool FetchInto(const Side& side, const ListingEntry& entry) {
        const FilePlace place{side.remote, *side.local, side.shown};
        return Tell(FetchFile(m_session, m_request, m_observer, place, entry));
    }

    bool Tell(FileReport report) {
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
        Side machine;
        machine.remote = m_font_directory;
        machine.shown = std::string(kMachine) + "/";
        Listing listing;
        const FtpResult result =
            ListDirectory(m_session, machine.remote, m_request.listing_limits, m_request.fruitless_tries, listing);
        if (result.error == FtpError::kNoDirectory || result.error == FtpError::kRefused) {
            m_observer.OnNote(Where(machine.remote) + ": " + result.words + "; no fonts are fetched");
        } else if (!result.Done()) {
            Fail(Where(machine.remote) + ": " + result.words);
        }
        if (!result.Done()) return;
        machine.listing = std::move(listing);
        Note(machine.listing, machine.remote);
        machine.local = OpenMachine();
        FetchFontsFrom(machine);
    }

    SafeDirectory OpenMachine() const {
        std::filesystem::path to = std::filesystem::absolute(m_request.to).lexically_normal();
        if (!to.has_filename()) to = to.parent_path();
        const bool beside = m_layout == Layout::kBeside && SameName(to.filename().string(), kMessages);
        return SafeDirectory(beside ? to.parent_path() : to).Below(std::string(kMachine));
    }

    void FetchFontsFrom(const Side& side) {
        for (const unsigned number : m_fonts) {
            if (m_observer.Cancelled()) return;
            const std::string name = UsualNameOf(number);
            const ListingEntry* entry = side.listing.Find(name);
            if (entry == nullptr) entry = side.listing.Find("." + std::to_string(number));
            if (entry != nullptr && entry->kind != EntryKind::kDirectory) {
                if (!IsReported(side.shown + entry->name)) FetchInto(side, *entry);
            } else if (HidesDots(side.listing)) {
                FetchInto(side, {.name = name, .kind = EntryKind::kUnknown});
            } else {
                Tell({.name = side.shown + name,
                      .outcome = FileOutcome::kMissing,
                      .reason = "the server doesn't have it"});
            }
        }
    }

    bool IsReported(const std::string& name) const {
        return std::ranges::any_of(m_report.files, [&](const FileReport& file) { return file.name == name; });
    }

    enum class Layout { kDisk, kBeside, kTogether };

    FtpSession& m_session;
    const FetchRequest& m_request;
    FetchObserver& m_observer;
    FetchReport m_report;
    Layout m_layout = Layout::kTogether;
    Side m_messages;
    std::string m_font_directory;  // the server's
    std::set<unsigned> m_fonts;    // that the messages name
};

}  // namespace

std::size_t FetchReport::Count(FileOutcome outcome) const {
    return static_cast<std::size_t>(std::ranges::count(files, outcome, &FileReport::outcome));
}

std::string FetchReport::Summary() const {
    struct Word {
        FileOutcome outcome;
        const char* words;
    };
    constexpr Word kWords[] = {{FileOutcome::kFetched, "fetched"},         {FileOutcome::kResumed, "resumed"},
                               {FileOutcome::kOverwritten, "overwritten"}, {FileOutcome::kWasThere, "there already"},
                               {FileOutcome::kMissing, "missing"},         {FileOutcome::kFailed, "failed"}};
    std::string text;
    for (const auto& [outcome, words] : kWords) {
        const std::size_t count = Count(outcome);
        if (count != 0) text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + words;
    }
    return text.empty() ? "nothing fetched" : text;
}

FetchReport RunFetch(FtpSession& session, const FetchRequest& request, FetchObserver& observer) {
    return Fetcher(session, request, observer).Run();
}

}  // namespace zel::ftp
