#pragma once

#include <string>

#include "host/export/export_subject.h"

namespace zel::exporter {

/// A self-contained page that shows a message: the picture on a checkerboard in its true proportions, with its
/// characters over it as transparent text that can be selected, and its tab fields as boxes.
/// @throws std::runtime_error for a document or picture that can't be read; either may be missing.
std::string MessagePage(ExportSubject& message);

}  // namespace zel::exporter
