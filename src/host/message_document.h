#pragma once

#include <string>

#include <nlohmann/json_fwd.hpp>

#include "host/message_record.h"

/// A message as a JSON document: rows with their texts, characters with place, font and colours, tab fields, fonts,
/// palette.
/// @param source  where the message came from, UTF-8.
nlohmann::ordered_json MessageDocument(const MessageRecord& message, const std::string& source);
