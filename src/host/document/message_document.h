#pragma once

#include <string>

#include "host/document/message_record.h"

namespace zel::document {

/// A message as a JSON document: rows with their texts, characters with place, font and colours, tab fields, fonts,
/// palette. Without blanks and line feeds; IndentedJson makes it a text to read.
/// @param source  where the message came from, UTF-8; what isn't becomes U+FFFD.
std::string MessageDocument(const MessageRecord& message, const std::string& source);

}  // namespace zel::document
