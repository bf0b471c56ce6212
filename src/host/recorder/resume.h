#pragma once

#include <set>
#include <string>
#include <vector>

#include "host/library/library.h"
#include "host/number_range.h"
#include "host/recorder/make_recording.h"

namespace zel::recorder {

/// Numbers from `first` to `last` whose recordings in a library are up to date: made with the same options from files
/// that have not changed, which the library keeps.
std::set<int> UpToDateNumbers(library::Library& library, const RecordingContext& context, int first, int last,
                              FileDigests& digests);

/// The range without some numbers, as the fewest ranges, in order.
std::vector<host::NumberRange> RangesWithout(const std::set<int>& numbers, int first, int last);

}  // namespace zel::recorder
