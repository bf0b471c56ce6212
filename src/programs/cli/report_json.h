#pragma once

#include <string>

#include "inspect/report.h"

namespace zel::cli {

/// "whole", "readable", "broken" or "foreign".
const char* VerdictName(inspect::Verdict verdict) noexcept;

/// A report as one line of JSON, without a line end. Texts from the file are as in the report: bytes that are not
/// printable ASCII appear as \xNN.
std::string ReportJson(const inspect::FileReport& report);

/// The line of a file that can't be read, in the same form.
std::string UnreadableJson(const std::string& name, const std::string& reason);

}  // namespace zel::cli
