#pragma once

#include <optional>
#include <string>

#include "host/ftp/secret.h"

namespace zel::cli {

/// Finds the password of a user on a server: in the environment's ZELTRANS_FTP_PASSWORD, else in a netrc file, else
/// from a prompt on the terminal.
/// @param netrc  without it, .netrc in the home directory. A file that other users can read is ignored.
/// @throws CommandError if there is no password.
ftp::Secret FindFtpPassword(const std::string& host, const std::string& user, const std::optional<std::string>& netrc);

}  // namespace zel::cli
