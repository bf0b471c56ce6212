#pragma once

#include <string>

#include "host/document/message_record.h"

namespace zel::document {

/// A message as a JSON document: rows with their texts, characters with position, font and colours, tab fields, fonts,
/// palette, and the warnings of WarningsOf. Paths are this system's. One line without blanks; IndentedJson makes it
/// readable. Described in docs/json.md.
std::string MessageDocument(const MessageRecord& message);

}  // namespace zel::document
