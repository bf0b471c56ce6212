#pragma once

#include "samples/disk/page.h"
#include "samples/message_writer.h"

namespace zel::samples {

/// The colour sets of the disk's house style: white, yellow, sky, mint, coral, amber, steel, light.
PaletteBlock HousePalette();

/// The page as a message with the house palette.
MessageFile Styled(Page& page);

}  // namespace zel::samples
