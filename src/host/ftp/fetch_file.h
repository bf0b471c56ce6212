#pragma once

#include "host/ftp/fetch.h"
#include "host/ftp/safe_directory.h"

namespace zel::ftp {

/// Where one file is fetched from and to.
struct FilePlace {
    const std::string& directory;  ///< the server's.
    const SafeDirectory& local;
    std::string shown;  ///< put before names in reports.
};

/// Fetches one file: goes on with a part of the very same remote file, tries again when the connection is cut, and
/// begins anew when what comes doesn't continue what is there.
/// @param entry  of the server's listing; a name alone when it isn't in one.
FileReport FetchFile(FtpSession& session, const FetchRequest& request, FetchObserver& observer, const FilePlace& place,
                     const ListingEntry& entry);

}  // namespace zel::ftp
