#pragma once

#include <string>

#include "inspect/report.h"

namespace zel::inspect {

/// Adds a finding with one place.
/// @return the finding, valid until the next one is added.
Finding& AddFinding(FileReport& report, Rule rule, const Place& place, RecordKind record = RecordKind::kFile);

/// Adds a finding that was collected, with its line for `info`. Does nothing if it has no places.
void AddFinding(FileReport& report, Finding finding, std::string what = {});

/// Ends the inspection of a file that is not foreign: makes the lines and the verdict from the findings.
/// @param refused  the module refuses the file.
void Conclude(FileReport& report, bool refused);

}  // namespace zel::inspect
