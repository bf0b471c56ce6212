#pragma once

#include <string>

#include "host/export/export_subject.h"

namespace zel::exporter {

/// The page of a message in a site: the picture with its characters as selectable text and its tab fields, its rows,
/// fields, fonts and warnings, and links to the message's other files. It has no script.
/// @param picture  address of the picture; empty without one.
/// @throws std::runtime_error for a document that can't be read.
std::string SitePage(ExportSubject& message, const std::string& picture);

}  // namespace zel::exporter
