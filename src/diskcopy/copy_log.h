#pragma once

#include <string>

#include "diskcopy/copy_run.h"

namespace zel::diskcopy {

/// A run's results in one line, such as "2 copied (1,234 bytes), 1 skipped".
std::string CopySummary(const CopyOutcome& outcome);

/// Writes the log into the target folder: a text file with CR LF, and a line for each file with its result and reason.
/// Its name is the first unused one of CopyLog.txt, CopyLog-2.txt and so on.
/// @return its path in the module's form; empty when it could not be written, with errno set.
std::string WriteCopyLog(const CopyPlan& plan, const CopyOutcome& outcome, const std::string& source,
                         const CopyRequest& request);

}  // namespace zel::diskcopy
