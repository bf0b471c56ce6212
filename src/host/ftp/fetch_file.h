#pragma once

#include "host/ftp/fetch.h"
#include "host/ftp/safe_directory.h"

namespace zel::ftp {

/// Where one file comes from and goes to.
struct FilePlace {
    /// On the server.
    const std::string& directory;
    const SafeDirectory& local;
    /// Prefix of the name in reports.
    std::string shown;
};

/// Fetches one file. Resumes the part of the same remote file, retries when the connection is lost, and starts over
/// when the received data does not continue the part.
/// @param entry  from the server's listing; only a name if the listing does not contain the file.
FileReport FetchFile(FtpSession& session, const FetchRequest& request, FetchObserver& observer, const FilePlace& place,
                     const ListingEntry& entry);

}  // namespace zel::ftp
