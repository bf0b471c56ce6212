#pragma once

#include <string>
#include <vector>

#include "host/document/message_record.h"

namespace zel::document {

/// Numbers of the message's fonts that were not found or not readable, in the order of their slots.
std::vector<int> MissingFonts(const MessageRecord& message);

/// What a user should know about an imported message, one line each: fonts that are missing or come from outside the
/// font directory, glyphs that could not be drawn.
std::vector<std::string> WarningsOf(const MessageRecord& message);

}  // namespace zel::document
