#include "programs/cli/suggestion.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace zel::cli {

namespace {

/// How many characters must be inserted, removed, replaced or swapped with their neighbour.
std::size_t EditDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before(b.size() + 1), last(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) last[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({replaced, last[j] + 1, row[j - 1] + 1});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before.swap(last);
        last.swap(row);
    }
    return last[b.size()];
}

}  // namespace

std::string Suggestion(std::string_view typed, std::span<const std::string> names) {
    constexpr std::size_t kLeastPrefix = 2, kLongestName = 64;
    if (typed.size() > kLongestName) return {};
    std::string best;
    // A third of the characters may be wrong.
    std::size_t least = std::max<std::size_t>(typed.size() / 3, 1) + 1;
    for (const std::string& name : names) {
        const bool is_beginning = typed.size() >= kLeastPrefix && name.starts_with(typed);
        const std::size_t distance = is_beginning ? 1 : EditDistance(typed, name);
        if (distance >= least) continue;
        least = distance;
        best = name;
    }
    return best;
}

}  // namespace zel::cli
