#pragma once

#include "host/compare/difference.h"
#include "host/compare/message_contents.h"

namespace zel::compare {

/// What differs between two messages. Rows and tab fields are matched in their order by what they contain, and so are
/// the characters of matched rows; a row that is in one message alone doesn't make the following ones different.
/// Exchanged messages give mirrored differences. Messages that differ at all give at least one.
Differences CompareContents(const MessageContents& a, const MessageContents& b);

}  // namespace zel::compare
