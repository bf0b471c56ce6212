#pragma once

#include <curl/curl.h>

#include "host/ftp/ftp_session.h"

namespace zel::ftp {

/// What libcurl's answer means here, in words. Of the server's own only the number of its last reply is told: its text
/// could hold anything, the password too.
/// @param reply  0 when there was none.
FtpResult ResultOf(CURLcode code, long reply);

}  // namespace zel::ftp
