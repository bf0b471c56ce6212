#pragma once

#include "host/document/message_record.h"
#include "host/picture/picture.h"

namespace zel::picture {

/// Draws the frames of a message's tab fields over its picture, each labelled with its name, or with its number, from
/// 1, when it has none. They are an aid for viewing and not part of the message.
void DrawTabFields(Picture& picture, const document::MessageRecord& message);

}  // namespace zel::picture
