#pragma once

#include <vector>

#include "samples/disk/disk_fonts.h"
#include "samples/message_writer.h"

namespace zel::samples {

/// A file of the demonstration disk's message directory.
struct DiskMessage {
    unsigned number = 0;
    /// Describes what it shows.
    const char* title = "";
    Bytes bytes;
};

/// Messages that look like television: lower third, list, score, credits, clock, weather, prices, PAL.
std::vector<DiskMessage> MakeBroadcastMessages(const FontShelf& fonts);

/// Messages that show one side of the format each, and the two RGBA files.
std::vector<DiskMessage> MakeFormatMessages(const FontShelf& fonts);

class Page;

/// The page as a message with the house palette.
MessageFile Styled(Page& page);

/// The colour sets of the disk's house style: white, yellow, sky, mint, coral, amber, steel, light.
PaletteBlock HousePalette();

}  // namespace zel::samples
