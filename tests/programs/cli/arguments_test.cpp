#include <algorithm>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"
#include "programs/cli/terminal_session.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Help, OfEachCommandFitsIntoTheTerminalAndGivesAnExample) {
    const CommandDisk disk;
    for (const std::string command : {"import", "batch", "export", "font", "info", "library", "diff", "fetch", "sample",
                                      "settings", "thumbnail", "verify"}) {
        for (const std::size_t width : {40U, 72U, 80U, 120U}) {
            const CommandResult result =
                disk.Shell("export COLUMNS=" + std::to_string(width) + "; zeltrans help " + command);
            EXPECT_EQ(result.exit_code, 0) << command;
            EXPECT_EQ(result.err, "") << command;
            EXPECT_THAT(result.out, HasSubstr("Usage: zeltrans " + command)) << command;
            EXPECT_THAT(result.out, HasSubstr("Example:\n  zeltrans " + command)) << command;
            std::istringstream lines(result.out);
            std::size_t longest = 0;
            for (std::string line; std::getline(lines, line);) longest = std::max(longest, line.size());
            EXPECT_LE(longest, width) << command;
            EXPECT_GT(longest + 20, width) << command << ": the width is used";
        }
    }
}

TEST(Help, IsThatOfEveryWayToAskForIt) {
    const CommandDisk disk;
    const std::string all = disk.Shell("zeltrans --help").out;
    EXPECT_THAT(all, HasSubstr("Usage: zeltrans [OPTIONS] COMMAND\n"));
    for (const char* line : {"zeltrans", "zeltrans help"}) {
        EXPECT_EQ(disk.Shell(line).out, all) << line;
        EXPECT_EQ(disk.Shell(line).exit_code, 0) << line;
    }
    const CommandResult remove = disk.Shell("zeltrans help library remove");
    EXPECT_THAT(remove.out, HasSubstr("Usage: zeltrans library remove [OPTIONS] LIBRARY NUMBERS\n"));
    EXPECT_EQ(disk.Shell("zeltrans library remove --help").out, remove.out);
    EXPECT_THAT(disk.Shell("zeltrans export --help").out, HasSubstr("[OPTIONS] --out DIR|- LIBRARY [NUMBERS]\n"));
    EXPECT_THAT(disk.Shell("COLUMNS=40; export COLUMNS; zeltrans help import").out,
                HasSubstr("Example:\n  zeltrans import DISK/MESSAGES/.0012 \\\n      --maps DISK --png 0012.png\n"))
        << "an example can be copied";
    EXPECT_THAT(disk.Shell("zeltrans --version").out, StartsWith("zeltrans "));
    TerminalSession terminal(disk, "stty cols 100; zeltrans help fetch");
    EXPECT_EQ(terminal.Wait(), 0);
    EXPECT_THAT(terminal.Output(), testing::ContainsRegex("\n.{85,100}\r"));
}

TEST(WrongArguments, GiveExitCodeTwoAndTheError) {
    const std::pair<const char*, const char*> cases[] = {
        {"imprt x", "Unknown command \"imprt\"\nDid you mean import?\n"},
        {"help imprt", "Unknown command \"imprt\"\nDid you mean import?\n"},
        {"library serch lib x", "Unknown command \"serch\"\nDid you mean search?\n"},
        {"library list lib --dsik a", "Did you mean --disk?\n"},
        {"batch --libary=lib", "Unknown option \"--libary\"\nDid you mean --library?\n"},
        {"quite-different", "Unknown command \"quite-different\"\nRun with"},
        {"library", "A command is required: list search show texts merge remove\n"},
        {"import", "MESSAGE is required"},
        {"import MESSAGES/.0012 MESSAGES/.0020", "MESSAGES/.0020"},
        {"import MESSAGES/.0012 --pgn x", "Unknown option \"--pgn\"\nDid you mean --png?\n"},
        {"import MESSAGES/.0012 --lines 500", "--lines: 500 not in {486,576}"},
        {"import MESSAGES/.0012 --answer maybe", "--answer: maybe not in {yes,no,cancel}"},
        {"import MESSAGES/.0012 --answer 0", "--answer: 0 not in {yes,no,cancel}"},
        {"import MESSAGES/.0012 --png ''", "--png: the path is empty"},
        {"export lib 1 2", "--out is required"},
        {"batch . 1 2 --jobs 257", "--jobs: Value 257 not in range 1 to 256"},
        // Options without an effect.
        {"batch . 1 2 --resume", "--resume requires --library"},
        {"batch . 1 2 --disk a --out o", "--disk requires --library"},
        {"batch . 1 2 --small", "--small requires --out or --library"},
        {"batch . 1 2 --jobs 2", "--jobs requires --out or --library"},
        {"batch . 1 2 --pixels", "--pixels requires --trace"},
        {"batch . 1 2 --answer yes", "--answer requires --warnings"},
        {"import MESSAGES/.0012 --small", "--small requires --png"},
        {"import MESSAGES/.0012 --fields --json x", "--fields requires --png"},
        {"import MESSAGES/.0012 --warnings --browse x", "--browse requires --answer yes"},
        {"font MACHINE/.0012 --answer yes", "--answer requires --warnings"},
        {"export lib --out o --premultiplied --format html",
         "--premultiplied requires --format png, key-fill, tga, "},
        {"export lib --out o --frame 1920x1080 --format square", "--frame requires --format png, key-fill, tga or "},
        {"export lib --out o --frame 1920", "\"1920\" is not a size such as 1920x1080"},
        {"export lib --out o --fit fill", "--fit requires --frame"},
        {"export lib --out o --run-lengths", "--run-lengths requires --format tga"},
        {"export lib --out o --key-names mixer", "--key-names requires --format key-fill"},
        {"export lib --out o --clear-colour glyph --premultiplied", "clear pixels are black"},
        {"export lib --out o --small --format tga --format json", "--small requires --format png"},
        {"export lib 12 --out - --jobs 2", "--jobs requires a directory of files"},
        {"fetch ftp://h/ --to o --netrc n", "--netrc requires --user or a user in URL"},
        {"fetch ftp://h/ --to o --ca c", "--ca requires --tls require or ftps://"},
        {"fetch ftps://h/ --to o --tls try", "--tls: ftps:// always requires TLS"},
    };
    const CommandDisk disk;
    for (const auto& [arguments, error] : cases) {
        const CommandResult result = disk.Shell(std::string("zeltrans ") + arguments);
        EXPECT_EQ(result.exit_code, 2) << arguments;
        EXPECT_EQ(result.out, "") << arguments;
        EXPECT_THAT(result.err, HasSubstr(error)) << arguments;
    }
}

}  // namespace

}  // namespace zel::test
