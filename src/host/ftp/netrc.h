#pragma once

#include <optional>
#include <string_view>

#include "host/ftp/secret.h"

namespace zel::ftp {

/// Looks for a host's password in the text of a netrc file: words "machine HOST login USER password TEXT", in any order
/// behind the host, and "default" for every other host. A word may stand in double quotes, with backslashes before
/// what is meant as it stands. Macros are passed over.
/// @param user  whose password it is to be; an entry without a login is everyone's.
std::optional<Secret> FindNetrcPassword(std::string_view text, std::string_view host, std::string_view user);

}  // namespace zel::ftp
