#include "host/recorder/resume.h"

#include <gtest/gtest.h>

namespace zel::test {

namespace {

/// The ranges as text: "1-2 5-9".
std::string Ranges(const std::set<int>& without, int first, int last) {
    std::string text;
    for (const host::NumberRange& range : recorder::RangesWithout(without, first, last)) {
        text += (text.empty() ? "" : " ") + range.first + '-' + range.last;
    }
    return text;
}

struct RangeCase {
    const char* name;
    std::set<int> without;
    int first, last;
    const char* ranges;
};
void PrintTo(const RangeCase& row, std::ostream* out) {
    *out << row.name;
}
class RangeWithoutNumbers : public testing::TestWithParam<RangeCase> {};
TEST_P(RangeWithoutNumbers, HasTheRest) {
    EXPECT_EQ(Ranges(GetParam().without, GetParam().first, GetParam().last), GetParam().ranges);
}
INSTANTIATE_TEST_SUITE_P(Each, RangeWithoutNumbers,
                         testing::Values(RangeCase{"nothing_to_leave_out", {}, 0, 9999, "0-9999"},
                                         RangeCase{"the_first_and_the_last", {3, 7}, 3, 7, "4-6"},
                                         RangeCase{"neighbours", {4, 5, 6}, 1, 9, "1-3 7-9"},
                                         RangeCase{"single_numbers_remain", {2, 4}, 1, 5, "1-1 3-3 5-5"},
                                         RangeCase{"others_outside_the_range", {1, 10}, 3, 7, "3-7"},
                                         RangeCase{"everything", {3, 4, 5}, 3, 5, ""},
                                         RangeCase{"an_empty_range", {}, 5, 4, ""}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(RangesWithout, CoverEachOtherNumberOnceForEverySet) {
    constexpr int kNumbers = 8;
    for (unsigned bits = 0; bits < 1U << kNumbers; ++bits) {
        std::set<int> without, covered;
        for (int number = 0; number < kNumbers; ++number) {
            if ((bits >> number & 1) != 0) without.insert(number);
        }
        for (const host::NumberRange& range : recorder::RangesWithout(without, 0, kNumbers - 1)) {
            for (int n = std::stoi(range.first); n <= std::stoi(range.last); ++n) {
                EXPECT_TRUE(!without.contains(n) && covered.insert(n).second) << bits;
            }
        }
        EXPECT_EQ(covered.size() + without.size(), std::size_t{kNumbers}) << bits;
    }
}

}  // namespace

}  // namespace zel::test
