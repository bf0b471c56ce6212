#pragma once

#include <optional>
#include <string>

#include "host/ftp/secret.h"

namespace zel::cli {

/// The password of a user on a server: from the environment's ZELTRANS_FTP_PASSWORD, else from a netrc file, else asked
/// for on the terminal, where it isn't shown.
/// @param netrc  without it, .netrc of the home directory. Files that others can read are not used.
/// @throws CommandError when there is none.
ftp::Secret FindFtpPassword(const std::string& host, const std::string& user, const std::optional<std::string>& netrc);

}  // namespace zel::cli
