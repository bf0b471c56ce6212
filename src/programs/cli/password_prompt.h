#pragma once

#include <string>

#include "host/ftp/secret.h"

namespace zel::cli {

/// Asks for a password on the controlling terminal, without echo.
/// @throws CommandError if there is no terminal, or if the user enters nothing or presses Ctrl-C.
ftp::Secret AskPassword(const std::string& user, const std::string& host);

}  // namespace zel::cli
