#pragma once

#include "host/document/message_record.h"

namespace zel::document {

/// Sets the texts of the rows from the characters. A gap between words (base::IsWordGap) that has no blank gets one.
void FillRowTexts(MessageRecord& message);

}  // namespace zel::document
