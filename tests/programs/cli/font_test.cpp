#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::AllOf;
using testing::EndsWith;
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

TEST(FontCommand, NotesThatAnotherFileWasRead) {
    const CommandDisk disk;
    const CommandResult result =
        disk.Shell("zeltrans font MACHINE/.0031 --maps . --warnings --answer yes --browse MACHINE/.0012 --trace -");
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_THAT(result.err, HasSubstr("\nfile dialog: Browse for Font File: .0031 ("));
    EXPECT_THAT(result.err, HasSubstr("\nnote: read from "));
    EXPECT_THAT(result.out, AllOf(StartsWith("{\"event\":\"box\""), EndsWith("}\n"))) << "only the trace";
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
