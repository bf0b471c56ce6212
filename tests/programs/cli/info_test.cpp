#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

TEST(InfoCommand, GivesExitCodeOneForABrokenFileAndContinues) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell(
        "head -c 1000 MESSAGES/.0012 >cut; echo hello >text; zeltrans info cut none text MACHINE/.0012 MESSAGES/.0020");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err,
              "zeltrans: cut: broken: its palette is cut short, 684 of 1,028 bytes present\n"
              "zeltrans: none: No such file or directory\n"
              "zeltrans: text: not a kind that the import reads: text, but neither of the two name lists\n");
    EXPECT_THAT(result.out, HasSubstr("MACHINE/.0012: font, whole\n"));
    EXPECT_THAT(result.out, HasSubstr("\n\nMESSAGES/.0020: RGBA picture, whole\n"));
}

TEST(InfoCommand, ListsADirectoryInOneLinePerFile) {
    const CommandDisk disk;
    disk.Shell(
        "rm -rf run.*; mkdir disk; mv MESSAGES MACHINE disk; echo hello >disk/README; printf x >>disk/MACHINE/.0012");
    CommandResult result = disk.Shell("zeltrans info disk");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.out,
              "disk: 4 files (1 message, 1 font, 1 RGBA picture, 1 text), 1 with defects\n"
              "  MACHINE/.0012   font          3,135  1 defect  \"Quay Bold\", 40 lines, 4 glyphs\n"
              "  MESSAGES/.0012  message       4,476  whole     3 rows, 11 characters, fonts 12 31, 2 tabs\n"
              "  MESSAGES/.0020  RGBA picture    212  whole     4 x 4\n"
              "  README          text              6  -         text, but neither of the two name lists\n"
              "\n"
              "  font 31 is missing; used by MESSAGES/.0012\n");
    result = disk.Shell("head -c 1000 disk/MESSAGES/.0012 >disk/MESSAGES/.0013; zeltrans info disk");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.out, HasSubstr("broken    its palette is cut short"));
    EXPECT_EQ(result.err, "zeltrans: disk: 1 broken\n");
}

TEST(InfoCommand, ReportsDirectoriesThatItCannotList) {
    const CommandDisk disk;
    const std::string zeltrans = disk.UnprivilegedCommand();
    if (zeltrans.empty()) GTEST_SKIP() << "permissions cannot be tested here";
    disk.Shell("mkdir disk; mv MESSAGES MACHINE disk; chmod 000 disk/MESSAGES");
    CommandResult result = disk.Shell(zeltrans + " info disk");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err, "zeltrans: disk: MESSAGES can't be listed: Permission denied\n");
    EXPECT_THAT(result.out, StartsWith("disk: 1 file (1 font), MESSAGES can't be listed: Permission denied\n"));
    EXPECT_THAT(result.out, HasSubstr("MACHINE/.0012"));
    result = disk.Shell("chmod 000 disk; " + zeltrans + " info disk; code=$?; " + zeltrans +
                        " info --json disk/; exit $((code * $?))");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err,
              "zeltrans: disk: the directory can't be listed: Permission denied\n"
              "zeltrans: disk/: the directory can't be listed: Permission denied\n");
}

TEST(InfoCommand, WritesOneJsonObjectPerLine) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell("printf x >>MESSAGES/.0012; zeltrans info --json MESSAGES/.0012 MACHINE");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    std::istringstream lines(result.out);
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    const json message = json::parse(line);
    EXPECT_EQ(message["verdict"], "readable");
    EXPECT_EQ(message["message"]["rows"][0]["text"][0], "NEWS");
    ASSERT_TRUE(std::getline(lines, line));
    EXPECT_EQ(json::parse(line)["font"]["name"], "Quay Bold");
    EXPECT_FALSE(std::getline(lines, line));
}

}  // namespace

}  // namespace zel::test
