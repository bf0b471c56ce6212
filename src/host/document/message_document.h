#pragma once

#include <string>

#include "host/document/message_record.h"

namespace zel::document {

/// A message as a JSON document: rows with their texts, characters with position, font and colours, tab fields, fonts,
/// palette, and the warnings if there are any. One line without blanks; IndentedJson makes it readable.
/// @param source  where the message came from, in UTF-8; invalid bytes become U+FFFD.
std::string MessageDocument(const MessageRecord& message, const std::string& source);

}  // namespace zel::document
