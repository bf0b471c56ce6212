#pragma once

#include <string>

#include "diskcopy/copy_run.h"

namespace zel::diskcopy {

/// What is told of a run. Private to the platform.

/// One line: "2 copied (1,234 bytes), 1 skipped", with what else there was.
std::string CopySummary(const CopyOutcome& outcome);

/// Writes the log into the target folder, as a text file with CR LF: what was copied, skipped and failed, with reasons.
/// It gets the first free name of CopyLog.txt, CopyLog-2.txt and so on, so that nothing of the user's is replaced.
/// @return its path in the module's form; empty when it could not be written, with errno set.
std::string WriteCopyLog(const CopyPlan& plan, const CopyOutcome& outcome, const std::string& source,
                         const CopyRequest& request);

}  // namespace zel::diskcopy
