#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

TEST(FontCommand, WritesASheetAndSummarizesTheFont) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell("zeltrans font MACHINE/.0012 --png 'a b.png'");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_THAT(result.out, StartsWith("MACHINE/.0012: \""));
    EXPECT_THAT(result.out, HasSubstr("; wrote a b.png\n"));
    EXPECT_THAT(disk.Read("a b.png"), StartsWith("\x89PNG"));
}

TEST(FontCommand, PrintsOnlyTheTraceToStandardOutput) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell("zeltrans font MACHINE/.0012 --png a.png --trace -");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    const std::size_t line = result.out.find('\n');
    const json font = json::parse(result.out.substr(0, line)), end = json::parse(result.out.substr(line));
    EXPECT_EQ(font["event"], "font");
    EXPECT_EQ(font["result"], 1);
    EXPECT_EQ(font["fonts"].size(), 16U);
    EXPECT_TRUE(font["fonts"][0].contains("effect") && font["fonts"][15].is_null());
    EXPECT_EQ(end["road"], "font");
    EXPECT_FALSE(end.contains("status"));
}

TEST(FontCommand, NotesThatAnotherFileWasRead) {
    const CommandDisk disk;
    const CommandResult result =
        disk.Shell("zeltrans font MACHINE/.0031 --maps . --warnings --answer yes --browse MACHINE/.0012");
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, HasSubstr("\nfile dialog: Browse for Font File: .0031 ("));
    EXPECT_THAT(result.err, HasSubstr("\nnote: read from "));
}

TEST(FontCommand, GivesExitCodeOneForAFailureAndTracesIt) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell("zeltrans font FONT.TXT --png a.png --trace -");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err, "zeltrans: FONT.TXT: a font file is named by a dot and a number, such as .0012\n");
    EXPECT_THAT(result.out, StartsWith("{\"event\":\"font\",\"result\":0,\"fonts\":[null,"));
    EXPECT_FALSE(std::filesystem::exists(disk / "a.png"));
}

}  // namespace

}  // namespace zel::test
