#pragma once

#include <string>

#include "inspect/report.h"

namespace zel::cli {

/// A report as one line of JSON, without a line end. Texts from the file are as in the report: bytes that are not
/// printable ASCII appear as \xNN.
std::string ReportJson(const inspect::FileReport& report);

}  // namespace zel::cli
