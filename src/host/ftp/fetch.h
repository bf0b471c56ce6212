#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "host/ftp/ftp_session.h"
#include "host/ftp/selection.h"

/// Fetches messages and the fonts that they use.
///
/// Directories: A remote directory that contains MESSAGES is a disk; MESSAGES and MACHINE are created in the local
/// directory. So is one named MESSAGES, with MACHINE beside it, unless the local directory is named MESSAGES too: then
/// that one receives the messages, and MACHINE beside it the fonts. Any other remote directory contains both messages
/// and fonts, and so does the local one.
namespace zel::ftp {

/// In bytes; far more than a message or a font needs.
inline constexpr std::uint64_t kLargestRemoteFile = 256U << 20;

struct FetchRequest {
    /// Host and port; identifies the server in the key of a part.
    std::string source;
    /// On the server.
    std::string directory;
    Selection selection;
    std::filesystem::path to;
    bool overwrite = false;
    bool fonts = true;
    /// In bytes.
    std::uint64_t file_limit = kLargestRemoteFile;
    ListingLimits listing_limits;
    /// Consecutive attempts without a new byte after which a file has failed.
    int max_attempts_without_progress = 3;
    /// Attempts per file.
    int max_attempts = 200;
    /// Before an attempt that follows one without progress.
    std::chrono::milliseconds pause{1000};
};

enum class FileOutcome {
    kFetched,
    /// Fetched; the beginning came from the part of an earlier run.
    kResumed,
    /// Fetched; replaced an existing file.
    kOverwritten,
    /// The file existed and was not overwritten.
    kSkipped,
    /// A font that a message uses and the server does not have.
    kMissing,
    kFailed,
};

struct FileReport {
    /// With its directory if that is not the request's own.
    std::string name;
    FileOutcome outcome = FileOutcome::kFailed;
    std::uint64_t bytes = 0;
    /// For kFailed and kMissing.
    std::string reason{};
    /// How often the connection was lost.
    int interruptions = 0;
};

/// Observes a fetch. RunFetch calls it on its own thread.
class FetchObserver {
  public:
    virtual ~FetchObserver() = default;
    /// @param size  of the whole file; 0 if unknown.
    virtual void OnProgress(const std::string& /*name*/, std::uint64_t /*bytes*/, std::uint64_t /*size*/) {}
    virtual void OnFile(const FileReport& /*file*/) {}
    virtual void OnNote(const std::string& /*text*/) {}
    /// Returning true ends the fetch; parts remain for the next run to resume.
    virtual bool Cancelled() { return false; }
};

struct FetchReport {
    std::vector<FileReport> files;
    /// Why the fetch ended early; empty if it did not.
    std::string failure;
    bool cancelled = false;

    std::size_t Count(FileOutcome outcome) const;
    /// Every requested file is there.
    bool Done() const { return failure.empty() && !cancelled && Count(FileOutcome::kFailed) == 0; }
    /// Such as "3 fetched, 1 skipped".
    std::string Summary() const;
};

FetchReport RunFetch(FtpSession& session, const FetchRequest& request, FetchObserver& observer);

}  // namespace zel::ftp
