#pragma once

#include <optional>
#include <string_view>

#include "host/ftp/secret.h"

namespace zel::ftp {

/// Finds a password in the text of a netrc file. An entry is "machine HOST login USER password TEXT", with login and
/// password in any order, or "default" in place of "machine HOST" for every other host. A token may be in double
/// quotes, where a backslash escapes the next character. Comments and macros are skipped.
/// @param user  whose password to find; an entry without a login applies to every user.
/// @return the password of the first entry that applies.
std::optional<Secret> FindNetrcPassword(std::string_view text, std::string_view host, std::string_view user);

}  // namespace zel::ftp
