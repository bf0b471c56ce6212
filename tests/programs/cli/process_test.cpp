// The command in processes that lack what it could take for granted.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct ProcessCase {
    const char* name;
    const char* line;
    int exit_code;
    const char* error;
    /// A file that the line leaves, with its beginning.
    const char* file;
    const char* begins;
};

class UnusualProcess : public testing::TestWithParam<ProcessCase> {};

TEST_P(UnusualProcess, LosesNothingAndLeavesNoDraft) {
    const CommandDisk disk;
    disk.Shell(
        "mkdir out; printf old >b; i=13; while [ $i -lt 20 ]; do cp MESSAGES/.0012 MESSAGES/.00$i; i=$((i+1)); done");
    const CommandResult result = disk.Shell(GetParam().line);
    EXPECT_EQ(result.exit_code, GetParam().exit_code) << result.err;
    EXPECT_THAT(result.err, HasSubstr(GetParam().error));
    EXPECT_THAT(disk.Read(GetParam().file), StartsWith(GetParam().begins));
    EXPECT_THAT(disk.Names(), testing::Each(testing::Not(HasSubstr("part"))));
}

INSTANTIATE_TEST_SUITE_P(
    Each, UnusualProcess,
    testing::Values(ProcessCase{"standard_output_closed", "zeltrans batch . 12 13 --report b >&-", 1, "standard output",
                                "b", "{\n  \"version\": 1,\n"},
                    ProcessCase{"standard_error_closed", "zeltrans import MESSAGES/.0012 --json b --warnings 2>&-", 0,
                                "", "b", "{\n"},
                    ProcessCase{"all_closed", "zeltrans import MESSAGES/.0012 --trace b --warnings <&- >&- 2>&-", 1, "",
                                "b", "{\"event\":"},
                    ProcessCase{"small_files_only", "(ulimit -f 1; zeltrans import MESSAGES/.0012 --trace b)", 1,
                                "b: can't be written: ", "b", "old"},
                    ProcessCase{"small_libraries_only", "(ulimit -f 4; zeltrans batch . 12 13 --library l)", 1,
                                "l: ", "b", "old"}),
    [](const auto& row) { return std::string(row.param.name); });

/// A shell that isn't interactive ignores SIGINT for a program in the background.
TEST(Batch, KeepsAnIgnoredInterruptIgnored) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell("trap '' INT; " + CommandDisk::Quoted(ZELTRANS_COMMAND) +
                                            " batch . 1 9999 & i=0; while [ $i -lt 50 ]; do kill -INT $!; sleep 0.02; "
                                            "i=$((i+1)); done 2>/dev/null; wait $!");
    EXPECT_EQ(result.exit_code, 0) << result.err;
}

}  // namespace

}  // namespace zel::test
