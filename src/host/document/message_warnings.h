#pragma once

#include <string>
#include <vector>

#include "host/document/message_record.h"

namespace zel::document {

/// Numbers of the fonts that a message names and that weren't found or couldn't be read, in the order of their slots.
std::vector<int> MissingFonts(const MessageRecord& message);

/// What a person should know of a message that arrived; a line each, empty when all is well.
std::vector<std::string> WarningsOf(const MessageRecord& message);

}  // namespace zel::document
