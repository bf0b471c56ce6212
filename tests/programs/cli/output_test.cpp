#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

struct OutputCase {
    const char* name;
    const char* option;
    const char* error;
};
void PrintTo(const OutputCase& output, std::ostream* out) {
    *out << output.name;
}

class UnwritableOutput : public testing::TestWithParam<OutputCase> {};

TEST_P(UnwritableOutput, IsReportedBeforeTheImportAndLeavesNoFile) {
    const CommandDisk disk;
    const auto before = disk.Names();
    // The missing message is not reported, because the output comes first.
    const CommandResult result = disk.Shell(std::string("zeltrans import MESSAGES/.0099 ") + GetParam().option);
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, std::string("zeltrans: ") + GetParam().error + "\n");
    EXPECT_EQ(disk.Names(), before);
}

INSTANTIATE_TEST_SUITE_P(
    Each, UnwritableOutput,
    testing::Values(
        OutputCase{"picture_in_a_missing_directory", "--png no/a.png",
                   "no/a.png: can't be written: No such file or directory"},
        OutputCase{"document_in_a_missing_directory", "--json no/a.json",
                   "no/a.json: can't be written: No such file or directory"},
        OutputCase{"trace_in_a_missing_directory", "--trace no/a", "no/a: can't be written: No such file or directory"},
        OutputCase{"below_a_file", "--json MESSAGES/.0012/a", "MESSAGES/.0012/a: can't be written: Not a directory"},
        OutputCase{"a_directory", "--png MESSAGES", "MESSAGES: can't be written: it is a directory"},
        OutputCase{"a_picture_on_a_device", "--png /dev/null", "/dev/null: can't be written: it is not a regular file"},
        OutputCase{"the_second_of_two", "--json a.json --png no/a.png",
                   "no/a.png: can't be written: No such file or directory"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Outputs, StayAsTheyWereWhenTheImportFails) {
    const CommandDisk disk;
    disk.Shell("echo old >a.png; echo old >a.json");
    const auto before = disk.Names();
    EXPECT_EQ(disk.Shell("zeltrans import MESSAGES/.0099 --png a.png --json a.json").exit_code, 1);
    EXPECT_EQ(disk.Read("a.png"), "old\n");
    EXPECT_EQ(disk.Read("a.json"), "old\n");
    EXPECT_EQ(disk.Names(), before);
}

TEST(Outputs, ReplaceTheTargetOfALink) {
    const CommandDisk disk;
    EXPECT_EQ(disk.Shell("echo old >real; ln -s real a.png; ln -s new a.json; "
                         "zeltrans import MESSAGES/.0012 --png a.png --json a.json")
                  .exit_code,
              0);
    EXPECT_TRUE(std::filesystem::is_symlink(disk / "a.png"));
    EXPECT_THAT(disk.Read("real"), StartsWith("\x89PNG"));
    EXPECT_THAT(disk.Read("new"), StartsWith("{"));
}

TEST(Outputs, KeepTheirPermissionsAndMayHaveLongNames) {
    const CommandDisk disk;
    const std::string name(250, 'n');
    for (const std::string option : {"--png", "--json", "--trace"}) {
        const std::string import = "zeltrans import MESSAGES/.0012 " + option + " " + name;
        const CommandResult result =
            disk.Shell(import + " && chmod 600 " + name + " && " + import + " && stat -c %a " + name + " >mode");
        EXPECT_EQ(result.exit_code, 0) << option << result.err;
        EXPECT_EQ(disk.Read("mode"), "600\n") << option;
    }
}

TEST(Outputs, ContainTheTraceOfAFailedImport) {
    const CommandDisk disk;
    EXPECT_EQ(disk.Shell("zeltrans import MESSAGES/.0099 --trace a.trace").exit_code, 1);
    EXPECT_THAT(disk.Read("a.trace"), HasSubstr("\"status\":3"));
}

TEST(Outputs, OnAFullDeviceAreAFailure) {
    const CommandDisk disk;
    for (const std::string line :
         {"zeltrans import MESSAGES/.0012 --trace /dev/full", "zeltrans import MESSAGES/.0012 --json /dev/full",
          "zeltrans import MESSAGES/.0012 --trace - >/dev/full", "zeltrans info MESSAGES/.0012 >/dev/full"}) {
        const CommandResult result = disk.Shell(line);
        EXPECT_EQ(result.exit_code, 1) << line;
        EXPECT_THAT(result.err, HasSubstr("written")) << line;
    }
}

}  // namespace

}  // namespace zel::test
