#include "host/recorder/resume.h"

#include <algorithm>

namespace zel::recorder {

std::set<int> UpToDateNumbers(library::Library& library, const RecordingContext& context, int first, int last,
                              FileDigests& digests) {
    std::set<int> numbers;
    for (const library::LibraryEntry& entry : library.List(context.disk)) {
        if (entry.key.number < first || entry.key.number > last) continue;
        std::optional<library::RecordingOrigin> origin = library.Origin(entry.key);
        if (!origin || origin->options != context.options || !origin->has_files) continue;
        for (library::SourceFile& source : origin->sources) source.path = context.relocation.Actual(source.path);
        if (AreUnchanged(origin->sources, context.font_directory, digests)) numbers.insert(entry.key.number);
    }
    return numbers;
}

std::vector<host::NumberRange> RangesWithout(const std::set<int>& numbers, int first, int last) {
    std::vector<host::NumberRange> ranges;
    for (int begin = first; begin <= last;) {
        const auto next = numbers.lower_bound(begin);
        const int end = next == numbers.end() ? last : std::min(*next - 1, last);
        if (begin <= end) ranges.push_back({std::to_string(begin), std::to_string(end)});
        begin = end + 2;
    }
    return ranges;
}

}  // namespace zel::recorder
