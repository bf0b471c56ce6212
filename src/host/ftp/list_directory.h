#pragma once

#include <string>

#include "host/ftp/ftp_session.h"

namespace zel::ftp {

/// Lists a directory with the first command that returns any entries, from the most exact command to the plainest.
/// @param max_attempts  per command, when the connection is lost.
/// @param listing       unchanged on failure.
FtpResult ListDirectory(FtpSession& session, const std::string& directory, const ListingLimits& limits,
                        int max_attempts, Listing& listing);

}  // namespace zel::ftp
