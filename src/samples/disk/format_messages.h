#pragma once

#include <vector>

#include "samples/disk/disk_fonts.h"
#include "samples/disk/disk_message.h"

namespace zel::samples {

/// Messages that show one side of the format each, and the two RGBA files.
std::vector<DiskMessage> MakeFormatMessages(const FontShelf& fonts);

}  // namespace zel::samples
