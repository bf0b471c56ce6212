#pragma once

#include "files/message_writer.h"
#include "samples/disk/page.h"

namespace zel::samples {

/// The colour sets of the disk's house style: white, yellow, sky, mint, coral, amber, steel, light.
files::PaletteBlock HousePalette();

/// The page as a message with the house palette.
files::MessageFile Styled(Page& page);

}  // namespace zel::samples
