#pragma once

#include <vector>

#include "samples/disk/disk_fonts.h"
#include "samples/disk/disk_message.h"

namespace zel::samples {

/// Messages that look like television: lower third, list, score, credits, clock, weather, prices, PAL.
std::vector<DiskMessage> MakeBroadcastMessages(const FontShelf& fonts);

}  // namespace zel::samples
