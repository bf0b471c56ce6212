#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "diskcopy/copy_plan.h"

namespace zel::diskcopy {

enum class CopyResult { kNotReached, kCopied, kSkipped, kFailed };

/// The result for one item of the plan.
struct CopyRecord {
    CopyResult result = CopyResult::kNotReached;
    /// Number of bytes copied.
    std::uint64_t bytes = 0;
    /// Why the file was skipped or failed.
    std::string reason;
};

/// Why a run ended.
enum class CopyEnd { kDone, kStopped, kDiskFull };

/// The result of a run.
struct CopyOutcome {
    /// One for each item of the plan.
    std::vector<CopyRecord> records;
    CopyEnd end = CopyEnd::kDone;
};

/// What a run needs besides the plan.
struct CopyRequest {
    /// A path in the module's form. The folder is created if it is missing.
    std::string target;
    /// Whether existing files are overwritten; otherwise they are skipped.
    bool overwrite = false;
    /// Called before each file.
    std::function<void(std::size_t item)> begin;
    /// Called before each file and between the pieces of a long one; true ends the run.
    std::function<bool()> stop;
};

/// Copies the plan's files to MESSAGES and MACHINE of the target. The names of existing folders and files keep their
/// case. A file appears whole or not at all, and is then on the disk. A file that fails doesn't end the run; a full
/// disk does.
/// @throws CopyRefused, with nothing written, when the target can't be used: it is the source, it can't be created, or
///         another run is copying to it.
CopyOutcome RunCopy(const CopyPlan& plan, const CopyRequest& request);

}  // namespace zel::diskcopy
