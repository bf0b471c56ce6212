#pragma once

#include <span>

#include <gmock/gmock.h>

#include "inspect/inspect.h"
#include "support/sample_files.h"

namespace zel::test {

inline constexpr auto kBroken = inspect::Verdict::kBroken;
inline constexpr auto kReadable = inspect::Verdict::kReadable;
inline constexpr auto kWhole = inspect::Verdict::kWhole;

/// One damage to a valid file, the verdict, and the expected text in the reason, the remarks or the defects, which
/// names the case.
template <typename File>
struct BreakCase {
    void (*break_it)(File&);
    inspect::Verdict verdict;
    const char* text;
};

/// Applies each damage to a file of its own.
template <typename File>
void ExpectReports(std::span<const BreakCase<File>> cases, File (*good)(),
                   inspect::FileReport (*inspect)(const File& file)) {
    for (const BreakCase<File>& row : cases) {
        SCOPED_TRACE(row.text);
        File file = good();
        row.break_it(file);
        const inspect::FileReport report = inspect(file);
        EXPECT_EQ(report.verdict, row.verdict);
        const std::string text = row.verdict == kBroken  ? report.reason
                                 : row.verdict == kWhole ? Lines(report.remarks)
                                                         : Lines(report.defects);
        EXPECT_THAT(text, testing::HasSubstr(row.text));
    }
}

}  // namespace zel::test
