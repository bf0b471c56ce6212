#pragma once

#include <set>
#include <string>
#include <vector>

#include "host/library/library.h"
#include "host/number_range.h"
#include "host/recorder/make_recording.h"

namespace zel::recorder {

/// Numbers from `first` to `last` that a library holds recordings of, made with the same options from files that are
/// still the same.
std::set<int> UpToDateNumbers(library::Library& library, const RecordingContext& context, int first, int last,
                              FileDigests& digests);

/// What is left of a range, as ranges that are not next to each other.
std::vector<host::NumberRange> RangesWithout(const std::set<int>& numbers, int first, int last);

}  // namespace zel::recorder
