#pragma once

#include <string>

#include "host/library/recording.h"

namespace zel::cli {

/// A recording without its picture and document: kind and number, labelled values, then sections of indented lines.
std::string RecordingText(const library::Recording& recording);

}  // namespace zel::cli
