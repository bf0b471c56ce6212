#pragma once

#include "host/picture/picture.h"

namespace zel::message {
struct LoadedMessage;
}

namespace zel::thumbnail {

/// What is known of a message without its fonts: a bar in the colour of each character, in its place and about as high
/// as its letter.
picture::Picture StandIn(const message::LoadedMessage& message);

}  // namespace zel::thumbnail
