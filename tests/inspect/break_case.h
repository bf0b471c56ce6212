#pragma once

#include <ostream>

#include <gmock/gmock.h>

#include "inspect/sample_files.h"

namespace zel::test {

inline constexpr auto kBroken = inspect::Verdict::kBroken;
inline constexpr auto kReadable = inspect::Verdict::kReadable;
inline constexpr auto kWhole = inspect::Verdict::kWhole;

/// One thing broken in a good file, the verdict, and what is told: as reason, remark or defect, as the verdict goes.
template <typename File>
struct BreakCase {
    const char* name;
    void (*break_it)(File&);
    inspect::Verdict verdict;
    const char* told;
};

template <typename File>
void PrintTo(const BreakCase<File>& row, std::ostream* out) {
    *out << row.name;
}

template <typename File>
void ExpectTold(const inspect::FileReport& report, const BreakCase<File>& row) {
    EXPECT_EQ(report.verdict, row.verdict);
    const std::string told = row.verdict == kBroken  ? report.reason
                             : row.verdict == kWhole ? Lines(report.remarks)
                                                     : Lines(report.defects);
    EXPECT_THAT(told, testing::HasSubstr(row.told));
}

}  // namespace zel::test
