#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "diskcopy/copy_plan.h"

namespace zel::diskcopy {

/// Copying what a plan holds. Private to the platform.

enum class CopyResult { kNotReached, kCopied, kSkipped, kFailed };

struct CopyRecord {
    CopyResult result = CopyResult::kNotReached;
    std::uint64_t bytes = 0;  // copied
    std::string reason;       // of a skip or a failure
};

/// Why a run ended before its last file.
enum class CopyEnd { kDone, kStopped, kDiskFull };

struct CopyOutcome {
    std::vector<CopyRecord> records;  // one for each item of the plan
    CopyEnd end = CopyEnd::kDone;
};

struct CopyRequest {
    std::string target;                           // a path in the module's form; made if it is missing
    bool overwrite = false;                       // else files that are there already are skipped
    std::function<void(std::size_t item)> begin;  // called before each file
    std::function<bool()> stop;                   // asked before each file and between the pieces of a long one
};

/// Copies the plan's files to MESSAGES and MACHINE of the target; folders and files that are there in another case keep
/// it. A file appears whole or not at all: it is written beside its place, and takes it once it is on the disk. A file
/// that fails doesn't keep the next from being copied; a full disk does.
/// @throws CopyRefused, with nothing written, when the target can't be used: it is the source, it can't be made, or a
/// second copy to it is under way.
CopyOutcome RunCopy(const CopyPlan& plan, const CopyRequest& request);

}  // namespace zel::diskcopy
