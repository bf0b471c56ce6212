// From a file to a document and back, by the commands.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(WriteCommand, MakesTheSameFilesFromTheirDocuments) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell(
        "set -e; zeltrans import MESSAGES/.0012 --json m.json -q; zeltrans write m.json --to m -q; "
        "zeltrans batch . --out out -q || true; zeltrans write out/0012.json --to b --exact -q; "
        "zeltrans import - --fonts MACHINE --json - <MESSAGES/.0012 | zeltrans write - --to - >p; "
        "zeltrans font MACHINE/.0012 --json - | zeltrans write - --to f; cmp f MACHINE/.0012; "
        "for file in m b p; do cmp $file MESSAGES/.0012; done");
    EXPECT_EQ(result.exit_code, 0) << result.out << result.err;
    EXPECT_THAT(result.out, HasSubstr("standard input: a font of "));
}

/// Recordings stay as they are: their documents have no file, those of --out have it also when they come from a
/// library.
TEST(WriteCommand, FindsAFileInTheDocumentsOfABatchAlone) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell(
        "zeltrans batch . 12 --library l.zellib --out out -q; rm out/*; "
        "zeltrans batch . 12 --library l.zellib --out out --resume -q; zeltrans write out/0012.json --to a -q && "
        "cmp a MESSAGES/.0012 && zeltrans library show l.zellib 12 --json shown.json >shown; "
        "grep -c '\"file\": {' shown.json; zeltrans write shown.json --to b");
    EXPECT_EQ(result.exit_code, 1) << result.err;
    EXPECT_EQ(result.out, "0\n");
    EXPECT_THAT(result.err, HasSubstr("shown.json: /file: is missing: the document is of an earlier release"));
}

TEST(WriteCommand, NamesEveryFaultAndWritesNothing) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell(
        "zeltrans import MESSAGES/.0012 --json m.json -q; "
        "sed '/\"file\"/,$s/\"x\": .*/\"x\": 2000,/;s/\"sha256\"/\"sha\"/' m.json >bad.json; zeltrans write bad.json "
        "--to m");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("bad.json: /file/rows/0/characters/0/x: 2000 is above 1023\n"));
    EXPECT_THAT(result.err, HasSubstr("bad.json: /file/sha: is an unknown key\n"));
    EXPECT_THAT(result.err, HasSubstr("; nothing was written\n"));
    EXPECT_FALSE(std::filesystem::exists(disk / "m"));
}

struct RefusedCase {
    const char* line;
    const char* error;
};

/// None of them changes a file.
TEST(WriteCommand, RefusesWhatItCannotDo) {
    const CommandDisk disk;
    disk.Shell(
        "zeltrans import MESSAGES/.0012 --json m.json -q; sed 's/\"x\": 1/\"x\": 2/' m.json >edited.json; "
        "ln m.json link.json; printf kept >kept; mkfifo pipe");
    const RefusedCase cases[] = {
        {"zeltrans write m.json --to kept", "kept: exists already; --overwrite replaces it"},
        {"zeltrans write m.json --to MESSAGES/.0012", "exists already"},
        {"zeltrans write m.json --to link.json --overwrite", "link.json: can't be written: it is the document"},
        {"zeltrans write edited.json --to new --exact", "edited.json: /file/sha256: belongs to other bytes"},
        {"zeltrans write missing.json --to new", "missing.json: "},
        {"zeltrans write pipe --to new", "pipe: it is a pipe"},
        {"zeltrans write kept --to new", "kept: is not JSON: parse error at line 1"},
    };
    for (const RefusedCase& refused : cases) {
        const CommandResult result = disk.Shell(refused.line);
        EXPECT_EQ(result.exit_code, 1) << refused.line;
        EXPECT_THAT(result.err, HasSubstr(refused.error));
    }
    EXPECT_EQ(disk.Read("kept"), "kept");
    EXPECT_FALSE(std::filesystem::exists(disk / "new"));
    EXPECT_EQ(disk.Shell("zeltrans write edited.json --to MESSAGES/.0012 --overwrite").exit_code, 0);
    EXPECT_THAT(disk.Shell("zeltrans import MESSAGES/.0012 -q").err, Not(HasSubstr("not")));
}

TEST(WriteCommand, NeedsExactForManyUnreadBytes) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell(
        "cp MESSAGES/.0012 MESSAGES/.0013; seq 20000 >>MESSAGES/.0013; zeltrans import MESSAGES/.0013 --json a.json; "
        "zeltrans write a.json --to a; zeltrans import MESSAGES/.0013 --json b.json --exact -q && "
        "zeltrans write b.json --to b -q && cmp b MESSAGES/.0013 && zeltrans import MESSAGES/.0013 --exact");
    EXPECT_EQ(result.exit_code, 2) << "--exact needs --json";
    EXPECT_THAT(result.err, HasSubstr("note: a.json leaves out 108894 bytes that nothing reads; --exact keeps them\n"));
    EXPECT_THAT(result.err, HasSubstr("a.json: /file/tail: 108894 bytes that were left out of the document"));
}

}  // namespace

}  // namespace zel::test
