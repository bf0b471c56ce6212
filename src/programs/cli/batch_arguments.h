#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/picture/png_writer.h"
#include "host/run/batch_run.h"
#include "host/trace.h"
#include "programs/cli/number_selection.h"
#include "programs/cli/run_options.h"

namespace zel::cli {

struct BatchArguments {
    /// Without disk and ranges.
    run::BatchRequest request;
    /// DISK... and NUMBERS, as they are given and after they are told apart.
    std::vector<std::string> words, numbers_in_help;
    std::vector<std::string> disks;
    NumberSelection numbers;
    std::optional<std::string> library, name, directory, report, trace, settings;
    host::TracePixels pixels = host::TracePixels::kNo;
    bool resume = false, strict = false, json = false, exact = false;
    picture::PngEffort effort = picture::PngEffort::kFast;
    int jobs = DefaultJobs();

    bool Records() const { return library || directory; }
    bool HasSeveralDisks() const { return disks.size() > 1; }
};

/// Tells the disks from the numbers: a word of digits, commas, dots and dashes is a list of numbers if it is among the
/// last ones and not the first.
/// @throws InvalidNumbers also for a disk that is named twice, and for a number that is also a directory here.
void SplitBatchWords(BatchArguments& arguments);

}  // namespace zel::cli
