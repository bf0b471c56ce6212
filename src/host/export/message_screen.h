#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/export/export_subject.h"

namespace zel::exporter {

/// A message's picture as an SVG element of a page, in its true proportions, with its characters over it as transparent
/// text that can be selected, and its tab fields as boxes.
/// @param picture  address of the picture; empty without one.
/// @throws std::runtime_error for a document that can't be read.
std::string MessageScreen(ExportSubject& message, const std::string& picture);

/// CSS of the proportions, for each video standard.
std::string ScreenStyle();

/// A heading and a list; nothing without texts.
std::string HtmlList(std::string_view heading, const std::vector<std::string>& texts);

}  // namespace zel::exporter
