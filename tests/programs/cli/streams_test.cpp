// Standard input and output in place of files, and what is printed beside them.
#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"
#include "programs/cli/terminal_session.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct StreamCase {
    /// Two lines of shell with the same standard output.
    const char* stream;
    const char* file;
};

TEST(Streams, HaveTheBytesOfTheFiles) {
    const CommandDisk disk;
    disk.Shell("zeltrans batch . 12-20 --library lib --disk ''");
    constexpr StreamCase kCases[] = {
        {"zeltrans import MESSAGES/.0012 --png -", "zeltrans import MESSAGES/.0012 --png f -q; cat f"},
        {"zeltrans import MESSAGES/.0012 --json -", "zeltrans import MESSAGES/.0012 --json f -q; cat f"},
        {"zeltrans import MESSAGES/.0012 --trace - --png p", "zeltrans import MESSAGES/.0012 --trace f -q; cat f"},
        {"zeltrans font MACHINE/.0012 --png -", "zeltrans font MACHINE/.0012 --png f -q; cat f"},
        {"zeltrans batch . 12-20 --report -", "zeltrans batch . 12-20 --report f -q; cat f"},
        {"zeltrans library show lib 12 --png -", "zeltrans library show lib 12 --png f >p; cat f"},
        {"zeltrans library show lib 12 --json -", "zeltrans library show lib 12 --json f >p; cat f"},
        {"zeltrans export lib 12 --out -", "zeltrans export lib 12 --out o -q; cat o/0012.png"},
        {"zeltrans export lib 12 --out - --format json",
         "zeltrans export lib 12 --out j --format json -q; cat j/0012.json"},
        {"cat MESSAGES/.0012 | zeltrans import - --fonts MACHINE --png -",
         "zeltrans import MESSAGES/.0012 --png f -q; cat f"},
        {"cat MACHINE/.0012 | zeltrans font - --png -", "zeltrans font MACHINE/.0012 --png f -q; cat f"},
        {"zeltrans info - <MESSAGES/.0012 | tail -n +2", "zeltrans info MESSAGES/.0012 | tail -n +2"},
    };
    for (const StreamCase& row : kCases) {
        const CommandResult stream = disk.Shell(row.stream), file = disk.Shell(row.file);
        EXPECT_EQ(stream.exit_code, 0) << row.stream << stream.err;
        EXPECT_THAT(stream.out, Not(IsEmpty())) << row.stream;
        EXPECT_TRUE(stream.out == file.out) << row.stream << "\n" << file.err;
    }
}

TEST(Streams, ThatCannotBeReadOrWrittenAreErrors) {
    struct Case {
        const char* line;
        int exit_code;
        const char* err;
    };
    const CommandDisk disk;
    disk.Shell("zeltrans batch . 12-20 --library lib");
    constexpr Case kCases[] = {
        {"head -c 1000 MESSAGES/.0012 | zeltrans import - --png p", 1,
         "zeltrans: standard input: the message file is damaged; \"zeltrans info\" shows where\n"},
        {"zeltrans font - <MESSAGES/.0012", 1, "zeltrans: standard input: not a font file but a message file\n"},
        {"zeltrans import - <&-", 1, "zeltrans: standard input: "},
        {"zeltrans import - <MESSAGES", 1, "zeltrans: standard input: can't be read: Is a directory\n"},
        {"head -c 90000000 /dev/zero | zeltrans info -", 1, "zeltrans: standard input: more than 80 MiB"},
        {"zeltrans info - -", 2, "standard input can be read once"},
        {"zeltrans import MESSAGES/.0012 --png - --json -", 2, "--png - excludes --json -"},
        {"zeltrans export lib 12-20 --out -", 1, "zeltrans: lib: contains 2 messages of this range"},
        {"zeltrans export lib --out - --format sheet", 2, "--out: standard output takes one --format"},
        {"zeltrans batch . --library -", 2, "--library: it can't be standard output; write ./- for a file"},
        {"zeltrans batch . --out -", 2, "--out: it can't be standard output"},
        {"export TMPDIR=/none; zeltrans import - <MESSAGES/.0012", 1, "can't be made for standard input"},
    };
    for (const Case& row : kCases) {
        const CommandResult result = disk.Shell(row.line);
        EXPECT_EQ(result.exit_code, row.exit_code) << row.line;
        EXPECT_EQ(result.out, "") << row.line;
        EXPECT_THAT(result.err, HasSubstr(row.err)) << row.line;
    }
    EXPECT_EQ(disk.Shell("TMPDIR=$PWD/run.tmp; export TMPDIR; mkdir run.tmp; zeltrans import - <MESSAGES/.0012 >p; ls "
                         "-A run.tmp")
                  .out,
              "")
        << "the spooled file is removed";
}

TEST(Streams, GiveNoPictureToATerminal) {
    const CommandDisk disk;
    TerminalSession terminal(disk, "zeltrans import MESSAGES/.0012 --png -");
    EXPECT_EQ(terminal.Wait(), 1);
    EXPECT_THAT(terminal.Output(), HasSubstr("zeltrans: standard output: can't be written: it is a terminal"));
}

TEST(Verbosity, LeavesErrorsAndAddsDetails) {
    struct Case {
        const char* line;
        int exit_code;
        const char* out;
        const char* err;
    };
    const CommandDisk disk;
    disk.Shell("head -c 1000 MESSAGES/.0012 >cut; zeltrans batch . 12-20 --library lib -q; printf x >>MACHINE/.0012");
    constexpr Case kCases[] = {
        {"import MESSAGES/.0012 -q", 0, "", ""},
        {"import MESSAGES/.0012 -q --strict", 1, "", "zeltrans: 1 note taken as a failure because of --strict\n"},
        {"import MESSAGES/.0020 -q --strict", 0, "", ""},
        {"import MESSAGES/.0020 --verbose", 0, "MESSAGES/.0020: an RGBA picture, inserted as an object\n",
         "message MESSAGES/.0020\n"},
        {"batch . 12-14 --quiet", 0, "", ""},
        {"batch . 20-21 --verbose", 0, ".0020 imported\n.0021 missing\n1 imported, 1 missing, 0 failed\n", ""},
        {"batch . 12-14 -q --strict", 1, "",
         "zeltrans: .: 1 message with warnings, which --strict takes as failures\n"},
        {"batch . 20 -q --strict", 0, "", ""},
        {"export lib 12 --out o -q --strict", 1, "", "zeltrans: 1 note taken as a failure because of --strict\n"},
        {"export lib 20 --out o -q --strict", 0, "", ""},
        {"font MACHINE/.0012 -q --strict", 0, "", ""},
        {"export lib --out o -v", 0, "2 messages, 4 files in o\n", "exporting .0012\nexporting .0020\n"},
        {"info MESSAGES/.0012 cut -q", 1, "",
         "zeltrans: cut: broken: its palette is cut short, 684 of 1,028 bytes present\n"},
        {"info MACHINE/.0012 -q --strict", 1, "", "zeltrans: MACHINE/.0012: readable, with defects\n"},
        {"info MACHINE -q --strict", 1, "", "zeltrans: MACHINE: 1 file with defects\n"},
        {"info MACHINE -q", 0, "", ""},
        {"library merge new lib -q", 0, "", ""},
        {"sample disk -q", 0, "", ""},
        {"import MESSAGES/.0012 -q -v", 2, "", "--quiet excludes --verbose\nRun with --help for more information.\n"},
    };
    for (const Case& row : kCases) {
        const CommandResult result = disk.Shell(std::string("zeltrans ") + row.line);
        EXPECT_EQ(result.exit_code, row.exit_code) << row.line;
        EXPECT_EQ(result.out, row.out) << row.line;
        EXPECT_EQ(result.err, row.err) << row.line;
    }
}

}  // namespace

}  // namespace zel::test
