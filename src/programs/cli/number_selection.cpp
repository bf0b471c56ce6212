#include "programs/cli/number_selection.h"

#include <algorithm>
#include <optional>

namespace zel::cli {

namespace {

/// A number of a list, with or without a leading dot. Larger than any if it has too many digits.
std::optional<int> NumberIn(std::string_view text) {
    const std::string_view digits = WithoutLeadingDot(text);
    if (digits.empty() || CountDigits(digits) != digits.size()) return std::nullopt;
    return MessageNumberOf(digits);
}

Interval IntervalIn(std::string_view text) {
    const std::size_t dash = text.find('-');
    const std::optional<int> first = NumberIn(text.substr(0, dash));
    const std::optional<int> last = dash == std::string_view::npos ? first : NumberIn(text.substr(dash + 1));
    const std::string quoted = '"' + std::string(text) + '"';
    if (!first || !last) throw InvalidNumbers(quoted + " is not a list of message numbers such as 12 or 1,3,7-9");
    if (*first > *last) throw InvalidNumbers(quoted + " ends before it begins");
    if (*last > kLargestMessageNumber)
        throw InvalidNumbers(quoted + ": message numbers end at " + std::to_string(kLargestMessageNumber));
    return {*first, *last};
}

/// In ascending order, joined where they touch.
std::vector<Interval> Joined(std::vector<Interval> intervals) {
    std::ranges::sort(intervals, {}, &Interval::first);
    std::vector<Interval> joined;
    for (const Interval& interval : intervals) {
        if (!joined.empty() && interval.first <= joined.back().last + 1) {
            joined.back().last = std::max(joined.back().last, interval.last);
        } else {
            joined.push_back(interval);
        }
    }
    return joined;
}

std::vector<Interval> ListIn(std::string_view text) {
    std::vector<Interval> intervals;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(',', begin), text.size());
        const std::string_view part = text.substr(begin, end - begin);
        // The whole list explains an empty part better.
        intervals.push_back(IntervalIn(part.empty() ? text : part));
        begin = end + 1;
    }
    return Joined(std::move(intervals));
}

/// FIRST LAST as the module understands them; none if it rejects them.
std::vector<Interval> TypedInterval(const host::NumberRange& range) {
    const std::string_view first = WithoutLeadingDot(range.first), last = WithoutLeadingDot(range.last);
    if (CountDigits(first) != first.size() || CountDigits(last) != last.size()) return {};
    const Interval interval{MessageNumberOf(first), MessageNumberOf(last)};
    const bool valid = interval.last >= 1 && interval.last <= kLargestMessageNumber && interval.first <= interval.last;
    return valid ? std::vector{interval} : std::vector<Interval>();
}

}  // namespace

NumberSelection NumberSelection::Parse(std::span<const std::string> words) {
    NumberSelection selection;
    if (words.empty()) return selection;
    selection.m_is_all = false;
    if (words.size() == 1) {
        selection.m_intervals = ListIn(words[0]);
        return selection;
    }
    for (const std::string& word : words) {
        if (words.size() > 2 || word.find_first_of(",-") != std::string::npos)
            throw InvalidNumbers('"' + word + "\": give one list such as 1,3,7-9, or FIRST LAST");
    }
    selection.m_typed = {{words[0], words[1]}};
    selection.m_intervals = TypedInterval(selection.m_typed.front());
    return selection;
}

std::vector<host::NumberRange> NumberSelection::Ranges() const {
    if (!m_typed.empty()) return m_typed;
    std::vector<host::NumberRange> ranges;
    ranges.reserve(m_intervals.size());
    for (const Interval& interval : m_intervals)
        ranges.push_back({std::to_string(interval.first), std::to_string(interval.last)});
    return ranges;
}

int NumberSelection::Count() const noexcept {
    int count = 0;
    for (const Interval& interval : m_intervals) count += interval.last - interval.first + 1;
    return count;
}

bool NumberSelection::Contains(int number) const noexcept {
    return std::ranges::any_of(m_intervals, [number](const Interval& interval) {
        return interval.first <= number && number <= interval.last;
    });
}

bool LooksLikeNumbers(std::string_view word) noexcept {
    return word.find_first_not_of("0123456789.,-") == std::string_view::npos &&
           word.find_first_of("0123456789") != std::string_view::npos;
}

}  // namespace zel::cli
