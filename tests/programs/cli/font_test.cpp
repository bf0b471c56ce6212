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

TEST(FontCommand, WritesAKitOnceUnlessToldToReplaceIt) {
    const CommandDisk disk;
    const CommandResult first = disk.Shell("zeltrans font MACHINE/.0012 --kit kit --otf --colours MESSAGES/.0012");
    EXPECT_EQ(first.exit_code, 0) << first.err;
    EXPECT_THAT(first.out, HasSubstr(" files to kit\n"));
    EXPECT_TRUE(std::filesystem::exists(disk / "kit/0012-pixels.ttf"));
    EXPECT_EQ(disk.Shell("cp -r kit old && rm kit/0012.json kit/0012_set0.fnt && echo x >kit/0012.ttf").exit_code, 0);
    const CommandResult second = disk.Shell("zeltrans font MACHINE/.0012 --kit kit --otf");
    EXPECT_EQ(second.exit_code, 1);
    EXPECT_THAT(second.err, EndsWith(": exists already; --overwrite replaces it\n"));
    EXPECT_FALSE(std::filesystem::exists(disk / "kit/0012_set0.fnt")) << "nothing is written";
    const CommandResult third = disk.Shell(
        "zeltrans font MACHINE/.0012 --kit kit --otf --colours MESSAGES/.0012 --overwrite && diff -r old kit");
    EXPECT_EQ(third.exit_code, 0) << third.err << third.out;
}

TEST(FontCommand, WritesTheKitsOfADiskAndGoesOnAfterAFailure) {
    const CommandDisk disk;
    disk.Shell("cp MACHINE/.0012 MACHINE/.0013; echo none >MACHINE/.0014; cp MACHINE/.0012 MACHINE/other");
    const CommandResult result = disk.Shell("zeltrans font . --kit kits");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.ErrorLines(), 1) << result.err;
    EXPECT_THAT(result.err, HasSubstr("MACHINE/.0014: "));
    EXPECT_THAT(result.out, EndsWith("2 fonts of 3 written to kits\n"));
    EXPECT_TRUE(std::filesystem::exists(disk / "kits/0013/0013_set7.fnt"));
    EXPECT_EQ(disk.Shell("diff -r kits/0012/0012_glyphs kits/0013/0013_glyphs").exit_code, 0);
}

TEST(FontCommand, GivesInstalledFontsOfADiskDifferentNames) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell("cp MACHINE/.0012 MACHINE/.0013 && zeltrans font MACHINE --kit kits --otf");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    // The family is followed by the style, each character in two bytes.
    std::string number;
    for (const char c : std::string(" 0013Regular")) number += {'\0', c};
    EXPECT_THAT(disk.Read("kits/0013/0013.ttf"), HasSubstr(number));
    number.replace(2 * 4, 2, std::string{'\0', '2'});
    EXPECT_THAT(disk.Read("kits/0012/0012.ttf"), Not(HasSubstr(number)));
}

struct KitRefusal {
    const char* line;
    int exit_code;
    const char* error;
};

TEST(FontCommand, RefusesKitsThatWouldDestroyOrMeanNothing) {
    const CommandDisk disk;
    for (const KitRefusal& refusal : {
             KitRefusal{"font MACHINE/.0012 --otf", 2, "--otf requires --kit"},
             KitRefusal{"font MACHINE/.0012 --kit kit --aspect pal", 2, "--aspect requires --otf"},
             KitRefusal{"font . --png a.png --kit kit", 2, "--png excludes a directory"},
             KitRefusal{"font .", 2, "a directory of fonts requires --kit"},
             KitRefusal{"font MACHINE/.0012 --kit MACHINE", 1, "contains the files of a disk"},
             KitRefusal{"font . --kit MESSAGES/new", 1, "contains the files of a disk"},
             KitRefusal{"font MESSAGES --kit kit", 1, "MESSAGES/.0012: "},
             KitRefusal{"font MACHINE/.0012 --kit kit --colours MESSAGES/.0020", 1,
                        "MESSAGES/.0020: a picture has no colour sets"},
             KitRefusal{"font MACHINE/.0012 --kit kit --colours none", 1, "none: "},
             KitRefusal{"font MACHINE/.0012 --kit run.err/kit", 1, "run.err/kit/0012_set0.fnt: "},
         }) {
        const CommandResult result = disk.Shell(std::string("zeltrans ") + refusal.line);
        EXPECT_EQ(result.exit_code, refusal.exit_code) << refusal.line;
        EXPECT_THAT(result.err, HasSubstr(refusal.error)) << refusal.line;
        EXPECT_FALSE(std::filesystem::exists(disk / "kit")) << refusal.line;
    }
}

}  // namespace

}  // namespace zel::test
