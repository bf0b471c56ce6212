#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "host/ftp/ftp_session.h"
#include "host/ftp/selection.h"

/// The fetching of messages with the fonts that they name.
///
/// Where things lie: a remote directory that holds MESSAGES is a disk, and the local directory gets MESSAGES and
/// MACHINE. A remote directory that is itself named MESSAGES has its fonts in MACHINE beside it; they go to MACHINE
/// beside a local directory of that name, else to MACHINE in the local directory. Any other remote directory holds
/// both, and so does the local one.
namespace zel::ftp {

/// Far more than a message or a font takes.
inline constexpr std::uint64_t kLargestRemoteFile = 256U << 20;

struct FetchRequest {
    std::string source;     ///< names the server in what is kept of a part: host and port.
    std::string directory;  ///< the server's.
    Selection selection;
    std::filesystem::path to;
    bool overwrite = false;
    bool fonts = true;
    std::uint64_t file_limit = kLargestRemoteFile;
    ListingLimits listing_limits;
    int fruitless_tries = 3;                ///< in a row, each bringing no new byte, after which a file is given up.
    int most_tries = 200;                   ///< of one file in all.
    std::chrono::milliseconds pause{1000};  ///< before a try that follows a fruitless one.
};

enum class FileOutcome {
    kFetched,
    kResumed,      ///< fetched, going on from an earlier run's part.
    kOverwritten,  ///< fetched, in place of what was there.
    kWasThere,     ///< left as it was.
    kMissing,      ///< a font that a message names and the server doesn't have.
    kFailed,
};

struct FileReport {
    std::string name;  ///< with its directory, if that isn't the request's own.
    FileOutcome outcome = FileOutcome::kFailed;
    std::uint64_t bytes = 0;
    std::string reason{};  ///< of kFailed and kMissing.
    int cuts = 0;          ///< how often the connection broke off on the way.
};

/// Hears of the work; the calls come from inside RunFetch.
class FetchObserver {
  public:
    virtual ~FetchObserver() = default;
    /// @param size  of the whole file; 0 when the server doesn't tell.
    virtual void OnProgress(const std::string& /*name*/, std::uint64_t /*bytes*/, std::uint64_t /*size*/) {}
    virtual void OnFile(const FileReport& /*file*/) {}
    virtual void OnNote(const std::string& /*text*/) {}
    /// True ends the work; parts stay, for the next run to go on with.
    virtual bool Cancelled() { return false; }
};

struct FetchReport {
    std::vector<FileReport> files;
    std::string failure;  ///< why nothing more could be done; empty when the work came to its end.
    bool cancelled = false;

    std::size_t Count(FileOutcome outcome) const;
    /// Everything that was asked for is there.
    bool Done() const { return failure.empty() && !cancelled && Count(FileOutcome::kFailed) == 0; }
    /// "3 fetched, 1 was there"
    std::string Summary() const;
};

FetchReport RunFetch(FtpSession& session, const FetchRequest& request, FetchObserver& observer);

/// A directory's listing, by the first command that shows something.
/// @param listing  untouched when it fails.
FtpResult ListDirectory(FtpSession& session, const std::string& directory, const ListingLimits& limits,
                        int fruitless_tries, Listing& listing);

}  // namespace zel::ftp
