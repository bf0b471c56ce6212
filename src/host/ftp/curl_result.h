#pragma once

#include <curl/curl.h>

#include "host/ftp/ftp_session.h"

namespace zel::ftp {

/// Translates a libcurl result. Of the server's last reply only the number is reported: its text could contain
/// anything, the password included.
/// @param reply  number of the server's last reply, 0 for none.
FtpResult ResultOf(CURLcode code, long reply);

}  // namespace zel::ftp
