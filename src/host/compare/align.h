#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace zel::compare {

/// Two items of two sequences that belong together, or one item that is in one sequence alone.
struct AlignedPair {
    static constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();
    /// Index in the first sequence, and in the second one; kNone where there is none.
    std::size_t a = kNone, b = kNone;

    bool IsMatch() const noexcept { return a != kNone && b != kNone; }
    friend bool operator==(const AlignedPair&, const AlignedPair&) = default;
};

/// Largest product of two lengths that is aligned at best; longer sequences are paired by their indexes.
inline constexpr std::size_t kMaxAlignedCells = std::size_t{1} << 20;

/// As Align, for sequences in one of the two orders.
template <typename Change, typename OnlyA, typename OnlyB>
std::vector<AlignedPair> AlignInOrder(std::size_t n, std::size_t m, const Change& change, const OnlyA& only_a,
                                      const OnlyB& only_b) {
    std::size_t head = 0, tail = 0;
    while (head < n && head < m && change(head, head) == 0) ++head;
    while (tail < n - head && tail < m - head && change(n - 1 - tail, m - 1 - tail) == 0) ++tail;
    const std::size_t rows = n - head - tail, columns = m - head - tail;
    std::vector<AlignedPair> pairs;
    pairs.reserve(std::max(n, m));
    for (std::size_t i = 0; i < head; ++i) pairs.push_back({i, i});
    if (columns != 0 && rows > kMaxAlignedCells / columns) {
        for (std::size_t i = 0; i < std::min(rows, columns); ++i) pairs.push_back({head + i, head + i});
        for (std::size_t i = columns; i < rows; ++i) pairs.push_back({head + i, AlignedPair::kNone});
        for (std::size_t j = rows; j < columns; ++j) pairs.push_back({AlignedPair::kNone, head + j});
    } else {
        // The least costs of what follows each pair of positions.
        const std::size_t step = columns + 1;
        std::vector<std::int32_t> costs((rows + 1) * step);
        for (std::size_t i = rows + 1; i-- > 0;) {
            for (std::size_t j = columns + 1; j-- > 0;) {
                if (i == rows && j == columns) continue;
                std::int32_t least = std::numeric_limits<std::int32_t>::max();
                if (i < rows) least = costs[(i + 1) * step + j] + only_a(head + i);
                if (j < columns) least = std::min(least, costs[i * step + j + 1] + only_b(head + j));
                if (i < rows && j < columns)
                    least = std::min(least, costs[(i + 1) * step + j + 1] + change(head + i, head + j));
                costs[i * step + j] = least;
            }
        }
        for (std::size_t i = 0, j = 0; i < rows || j < columns;) {
            const std::int32_t least = costs[i * step + j];
            if (i < rows && j < columns && least == costs[(i + 1) * step + j + 1] + change(head + i, head + j)) {
                pairs.push_back({head + i++, head + j++});
            } else if (i < rows && least == costs[(i + 1) * step + j] + only_a(head + i)) {
                pairs.push_back({head + i++, AlignedPair::kNone});
            } else {
                pairs.push_back({AlignedPair::kNone, head + j++});
            }
        }
    }
    for (std::size_t i = 0; i < tail; ++i) pairs.push_back({n - tail + i, m - tail + i});
    return pairs;
}

/// Pairs the items of two sequences in their order, with the least sum of costs. Of several equally good ways, it takes
/// the one of the sequences in the other order if `swapped` is set: a caller that sets it for one of the two orders
/// gets mirrored results. Items that are in one sequence alone precede those of the other one between two pairs.
/// @param n, m    lengths.
/// @param change  int(i, j): costs of a pair; symmetric.
/// @param only_a  int(i): costs of an item without a partner.
/// @param only_b  int(j): likewise.
template <typename Change, typename OnlyA, typename OnlyB>
std::vector<AlignedPair> Align(std::size_t n, std::size_t m, bool swapped, const Change& change, const OnlyA& only_a,
                               const OnlyB& only_b) {
    std::vector<AlignedPair> pairs;
    if (swapped) {
        pairs = AlignInOrder(
            m, n, [&](std::size_t i, std::size_t j) { return change(j, i); }, only_b, only_a);
        for (AlignedPair& pair : pairs) std::swap(pair.a, pair.b);
    } else {
        pairs = AlignInOrder(n, m, change, only_a, only_b);
    }
    const auto is_match = [](const AlignedPair& pair) { return pair.IsMatch(); };
    for (auto from = pairs.begin(); from != pairs.end();) {
        const auto to = std::find_if(from, pairs.end(), is_match);
        std::stable_partition(from, to, [](const AlignedPair& pair) { return pair.b == AlignedPair::kNone; });
        from = std::find_if_not(to, pairs.end(), is_match);
    }
    return pairs;
}

}  // namespace zel::compare
