#pragma once

#include <string_view>

#include "inspect/report.h"

namespace zel::inspect {

/// Adds the entries of a name list to its report, reports what an import reads otherwise than it is written, and ends
/// the inspection.
/// @param report  of the kind of the list.
void CheckList(std::string_view file, FileReport& report);

}  // namespace zel::inspect
