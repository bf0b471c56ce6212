#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Help, OfEachCommandFitsIntoATerminalAndGivesAnExample) {
    const CommandDisk disk;
    for (const std::string command :
         {"import", "batch", "export", "font", "info", "library", "fetch", "sample", "settings", "thumbnail"}) {
        const CommandResult result = disk.Shell("zeltrans " + command + " --help");
        EXPECT_EQ(result.exit_code, 0) << command;
        EXPECT_EQ(result.err, "") << command;
        EXPECT_THAT(result.out, HasSubstr("Usage: zeltrans " + command + " [OPTIONS] ")) << command;
        EXPECT_THAT(result.out, HasSubstr("Example:\n  zeltrans " + command)) << command;
        std::istringstream lines(result.out);
        for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
    }
    EXPECT_THAT(disk.Shell("zeltrans export --help").out, HasSubstr("[OPTIONS] --out DIR|- LIBRARY [NUMBERS]\n"));
    EXPECT_EQ(disk.Shell("zeltrans --help").exit_code, 0);
    EXPECT_THAT(disk.Shell("zeltrans --version").out, StartsWith("zeltrans "));
}

TEST(WrongArguments, GiveExitCodeTwoAndTheError) {
    const std::pair<const char*, const char*> cases[] = {
        {"imprt x", "Unknown command \"imprt\"\nDid you mean import?\n"},
        {"import", "MESSAGE is required"},
        {"import MESSAGES/.0012 MESSAGES/.0020", "MESSAGES/.0020"},
        {"import MESSAGES/.0012 --pgn x", "Unknown option \"--pgn\"\nDid you mean --png?\n"},
        {"import MESSAGES/.0012 --lines 500", "--lines: 500 not in {486,576}"},
        {"import MESSAGES/.0012 --answer maybe", "--answer: maybe not in {yes,no,cancel}"},
        {"import MESSAGES/.0012 --answer 0", "--answer: 0 not in {yes,no,cancel}"},
        {"import MESSAGES/.0012 --png ''", "--png: the path is empty"},
        {"export lib 1 2", "--out is required"},
        {"batch . 1 2 --jobs 257", "--jobs: Value 257 not in range 1 to 256"},
        {"batch . 1 2 --resume", "--resume requires --library"},
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
