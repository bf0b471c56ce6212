#pragma once

#include <string>

#include "host/live/form_json.h"

namespace zel::live {

/// A page that shows a message on a transparent ground and fills its fields, for CasparCG, SPX and a browser. It has
/// everything that it needs; its policy forbids all other scripts, and loading anything.
std::string TemplatePage(const LiveForm& form, const LiveLook& look);

}  // namespace zel::live
