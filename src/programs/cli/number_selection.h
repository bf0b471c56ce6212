#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/number_range.h"
#include "module/contract/message_id.h"

namespace zel::cli {

/// Numbers from `first` to `last`.
struct Interval {
    int first = 0, last = kLargestMessageNumber;

    friend bool operator==(const Interval&, const Interval&) = default;
};

/// Arguments that should be message numbers and are none.
class InvalidNumbers : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The message numbers that a user selects: all, those of a list such as 1,3,7-9, or FIRST LAST.
class NumberSelection {
  public:
    /// All numbers.
    NumberSelection() : m_intervals{Interval{}} {}

    /// @param words  the arguments: none for all numbers; one list; or FIRST and LAST, which are not checked, since the
    ///               module checks what is typed into its dialog.
    /// @throws InvalidNumbers
    static NumberSelection Parse(std::span<const std::string> words);

    bool IsAll() const noexcept { return m_is_all; }
    /// As they are typed into the module's dialog, in order.
    std::vector<host::NumberRange> Ranges() const;
    /// In ascending order and apart from each other; none if the module rejects FIRST LAST.
    const std::vector<Interval>& Intervals() const noexcept { return m_intervals; }
    /// How many numbers the intervals contain.
    int Count() const noexcept;
    bool Contains(int number) const noexcept;

  private:
    bool m_is_all = true;
    /// FIRST LAST, or nothing.
    std::vector<host::NumberRange> m_typed;
    std::vector<Interval> m_intervals;
};

/// Whether a word consists of the characters of a list of numbers, so that it is meant as one.
bool LooksLikeNumbers(std::string_view word) noexcept;

}  // namespace zel::cli
