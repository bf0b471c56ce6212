#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::HasSubstr;

struct DiffCase {
    const char* arguments;
    int exit_code;
    /// Part of it.
    const char* out;
    const char* err;
};

}  // namespace

TEST(DiffCommand, TellsTheSameFromTheDifferentAndFromTrouble) {
    const CommandDisk disk;
    files::MessageFile message = GoodMessage();
    message.header.word_0 = 9;
    samples::WriteWholeFile(disk / "other/MESSAGES/.0012", files::WriteMessage(message));
    samples::WriteWholeFile(disk / "other/MACHINE/.0012", files::WriteFont(GoodFont()));
    message.rows[0].cells[0].char_code = 'M';
    samples::WriteWholeFile(disk / "MESSAGES/.0013", files::WriteMessage(message));
    files::Bytes cut = files::WriteMessage(message);
    cut.resize(cut.size() / 2);
    samples::WriteWholeFile(disk / "cut/MESSAGES/.0012", cut);
    disk.Shell("tar cf disk.tar MESSAGES MACHINE; zeltrans batch . --library m.zellib; mkfifo pipe; printf x >text");
    const DiffCase cases[] = {
        {"MESSAGES/.0012 MESSAGES/12", 0, "are the same\n", ""},
        {"MESSAGES/.0012 other/MESSAGES/.0012", 0, "the same but for 1 byte without effect on an import\n", ""},
        {"MESSAGES/.0012 other/MESSAGES/.0012 --bytes", 1, "\n  bytes: 1 differs, at offset 153\n", ""},
        {"MESSAGES/.0012 MESSAGES/.0013", 1, "differ:\n  row 0: \"NEWS\" -> \"MEWS\"\n", "font 31"},
        {"- MESSAGES/.0012 <MESSAGES/.0013", 1, "- and MESSAGES/.0012 differ:\n", ""},
        {"MESSAGES/.0012 MESSAGES/.0013 -q", 1, "", ""},
        {"MESSAGES/.0020 MESSAGES/.0020", 0, "are the same\n", ""},
        {". other", 1,
         ". and other: 1 file the same, 1 the same but for bytes without effect on an import, 2 only in .\n", ""},
        {". disk.tar", 0, ": 4 files the same\n", ""},
        {". cut", 2, "1 not compared\n", "cut/MESSAGES/.0012: "},
        {"m.zellib m.zellib", 0, ": 3 recordings the same\n", ""},
        {". m.zellib", 2, "", "zeltrans: . is a disk, m.zellib is a library\n"},
        {"MESSAGES/.0012 MACHINE/.0012", 2, "", "MESSAGES/.0012 is a message, MACHINE/.0012 is a font\n"},
        {"MESSAGES/.0012 missing", 2, "", "zeltrans: missing: there is no such file or directory\n"},
        {"MESSAGES/.0012 pipe", 2, "", "zeltrans: pipe: a pipe, not a file\n"},
        {"MESSAGES/.0012 text", 2, "", "zeltrans: text: not a message file but text\n"},
        {"MESSAGES/.0012", 2, "", "B is required"},
        {". other --picture p.png", 2, "", "--picture needs two messages, fonts or RGBA pictures\n"},
        {"MESSAGES/.0012 MESSAGES/.0013 --picture MESSAGES/.0013", 2, "", "MESSAGES/.0013: can't be written"},
    };
    for (const DiffCase& diff : cases) {
        const CommandResult result = disk.Shell(std::string("zeltrans diff ") + diff.arguments);
        EXPECT_EQ(result.exit_code, diff.exit_code) << diff.arguments << result.out << result.err;
        EXPECT_THAT(result.out, HasSubstr(diff.out)) << diff.arguments;
        EXPECT_THAT(result.err, HasSubstr(diff.err)) << diff.arguments;
    }
    EXPECT_EQ(disk.Read("MESSAGES/.0013").substr(0, 4), std::string("\0\0\2\276", 4)) << "an input is as it was";
}

TEST(DiffCommand, WritesAPictureOfTheDifferences) {
    const CommandDisk disk;
    files::FontFile font = GoodFont();
    font.AddRunCoded(65, {files::ColourRun(2, 255, 6), files::EndOfLine(), files::EndOfGlyph()}, 2, 9);
    samples::WriteWholeFile(disk / "MACHINE/.0013", files::WriteFont(font));
    const CommandResult fonts = disk.Shell("zeltrans diff MACHINE/.0012 MACHINE/.0013 --picture - | head -c 4");
    EXPECT_EQ(fonts.out, "\x89PNG") << fonts.err;
    const CommandResult same = disk.Shell("zeltrans diff MACHINE/.0012 MACHINE/.0012 --picture p.png");
    EXPECT_EQ(same.exit_code, 0);
    EXPECT_THAT(same.err, HasSubstr("note: no glyph is drawn differently; p.png was not written\n"));
}

}  // namespace zel::test
