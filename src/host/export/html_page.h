#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/export/export_subject.h"

namespace zel::exporter {

/// A page of its own that shows a message: the picture on a checkerboard in its true proportions, its characters over
/// it as clear text that can be selected, and its tab fields as boxes.
/// @throws std::runtime_error for a document or picture that can't be read; a message without them has a page as well.
std::string MessagePage(ExportSubject& message);

/// A page with the messages that have a page, each a link.
/// @param messages  stems and titles.
std::string IndexPage(const std::vector<std::pair<std::string, std::string>>& messages);

}  // namespace zel::exporter
