#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::HasSubstr;

constexpr char kMoved[] = "mkdir disk; mv MESSAGES MACHINE disk";

TEST(VerifyCommand, ExitsWithOneForFaultsOnly) {
    struct Case {
        const char* line;
        int exit_code;
        /// Parts of the outputs.
        const char* out;
        const char* err;
    };
    const CommandDisk disk;
    disk.Shell(
        "echo hello >README; echo hello >.0099; head -c 1000 MESSAGES/.0012 >cut; mkdir empty; "
        "mkdir fonts; cp MACHINE/.0012 fonts; cp README fonts; printf x | cat MACHINE/.0012 - >trailing");
    constexpr Case kCases[] = {
        {"zeltrans verify MACHINE/.0012", 0, "MACHINE/.0012: font, whole", ""},
        {"zeltrans verify fonts", 0, "fonts/README: text, not a kind that the import reads", ""},
        {"zeltrans verify empty", 0, "0 files", ""},
        {"zeltrans verify - <MESSAGES/.0020", 0, "standard input: RGBA picture, whole", ""},
        {"zeltrans verify cut", 1,
         "  fault  0x013C (316)  palette: 684 of 1,028 bytes present; rule: the section is "
         "complete; import refuses the file\n",
         "zeltrans: cut: 1 fault\n"},
        {"zeltrans verify trailing --quiet", 1, "", "zeltrans: trailing: 1 fault\n"},
        {"zeltrans verify README", 1, "file_type is 1751477356", "zeltrans: README: 1 fault\n"},
        {"mkdir numbered; mv .0099 numbered; zeltrans verify numbered", 1, "1 file (1 foreign), 1 fault", ""},
        {"zeltrans verify none", 1, "", "zeltrans: none: No such file or directory\n"},
        {"zeltrans verify", 2, "", "PATH is required"},
        {"zeltrans verify - -", 2, "", "standard input can be read once"},
        {"zeltrans verify fonts --quiet --verbose", 2, "", "excludes"},
        {"truncate -s 4G huge; zeltrans verify huge", 1, "", "zeltrans: huge: larger than 80 MiB"},
    };
    for (const Case& line : kCases) {
        const CommandResult result = disk.Shell(line.line);
        EXPECT_EQ(result.exit_code, line.exit_code) << line.line << result.err;
        EXPECT_THAT(result.out, HasSubstr(line.out)) << line.line;
        EXPECT_THAT(result.err, HasSubstr(line.err)) << line.line;
    }
}

TEST(VerifyCommand, ReportsTheFontsOfADisk) {
    const CommandDisk disk;
    disk.Shell(kMoved);
    const CommandResult result = disk.Shell("cp disk/MACHINE/.0012 disk/MACHINE/.0044; zeltrans verify disk");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(
        result.out,
        HasSubstr("fault: font 31 is missing; used by disk/MESSAGES/.0012; import leaves its characters out, and "
                  "the rest of their rows\n"
                  "note: no message names 1 font: disk/MACHINE/.0044\n"
                  "4 files (4 whole), 1 missing font, 2 notes\n"));
    EXPECT_EQ(result.err, "zeltrans: disk: 1 missing font\n");
}

TEST(VerifyCommand, WritesOneJsonObjectPerFileAndASummary) {
    const CommandDisk disk;
    disk.Shell(kMoved);
    const CommandResult result = disk.Shell("printf x >>disk/MACHINE/.0012; zeltrans verify --json disk");
    EXPECT_EQ(result.exit_code, 1);
    std::vector<nlohmann::json> lines;
    for (std::size_t at = 0; at < result.out.size(); at = result.out.find('\n', at) + 1)
        lines.push_back(nlohmann::json::parse(result.out.substr(at, result.out.find('\n', at) - at)));
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0]["findings"][0]["rule"], "trailing-bytes");
    EXPECT_EQ(lines[0]["findings"][0]["places"][0]["offset"], 3134);
    EXPECT_EQ(lines[1]["import"], (nlohmann::json{{"rows", 3}, {"characters", 11}, {"tab_fields", 2}}));
    EXPECT_EQ(lines[3]["type"], "summary");
    EXPECT_EQ(lines[3]["faults"], 1);
    EXPECT_EQ(lines[3]["missing_fonts"][0]["number"], 31);
}

}  // namespace

}  // namespace zel::test
