#pragma once

#include <ostream>

#include <gmock/gmock.h>

#include "inspect/sample_files.h"

namespace zel::test {

inline constexpr auto kBroken = inspect::Verdict::kBroken;
inline constexpr auto kReadable = inspect::Verdict::kReadable;
inline constexpr auto kWhole = inspect::Verdict::kWhole;

/// One damage to a valid file, the verdict, and the expected text in the reason, the remarks or the defects.
template <typename File>
struct BreakCase {
    const char* name;
    void (*break_it)(File&);
    inspect::Verdict verdict;
    const char* text;
};

template <typename File>
void PrintTo(const BreakCase<File>& row, std::ostream* out) {
    *out << row.name;
}

template <typename File>
void ExpectText(const inspect::FileReport& report, const BreakCase<File>& row) {
    EXPECT_EQ(report.verdict, row.verdict);
    const std::string text = row.verdict == kBroken  ? report.reason
                             : row.verdict == kWhole ? Lines(report.remarks)
                                                     : Lines(report.defects);
    EXPECT_THAT(text, testing::HasSubstr(row.text));
}

}  // namespace zel::test
