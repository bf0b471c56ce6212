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
         {"import", "batch", "export", "font", "info", "library", "fetch", "sample", "settings"}) {
        const CommandResult result = disk.Shell("zeltrans " + command + " --help");
        EXPECT_EQ(result.exit_code, 0) << command;
        EXPECT_EQ(result.err, "") << command;
        EXPECT_THAT(result.out, HasSubstr("Usage: zeltrans " + command + " [OPTIONS] ")) << command;
        EXPECT_THAT(result.out, HasSubstr("Example:\n  zeltrans " + command)) << command;
        std::istringstream lines(result.out);
        for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 80U) << line;
    }
    EXPECT_THAT(disk.Shell("zeltrans export --help").out, HasSubstr("[OPTIONS] --out DIR LIBRARY FIRST LAST\n"));
    EXPECT_EQ(disk.Shell("zeltrans --help").exit_code, 0);
    EXPECT_THAT(disk.Shell("zeltrans --version").out, StartsWith("zeltrans "));
}

struct WrongCase {
    const char* name;
    const char* arguments;
    const char* error;
};
void PrintTo(const WrongCase& wrong, std::ostream* out) {
    *out << wrong.name;
}

class WrongArguments : public testing::TestWithParam<WrongCase> {};

TEST_P(WrongArguments, GiveExitCodeTwoAndTheError) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell(std::string("zeltrans ") + GetParam().arguments);
    EXPECT_EQ(result.exit_code, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Each, WrongArguments,
    testing::Values(
        WrongCase{"no_command", "", "A subcommand is required"},
        WrongCase{"unknown_command", "imprt x", "Unknown command \"imprt\""},
        WrongCase{"no_message", "import", "MESSAGE is required"},
        WrongCase{"two_messages", "import MESSAGES/.0012 MESSAGES/.0020", "MESSAGES/.0020"},
        WrongCase{"unknown_option", "import MESSAGES/.0012 --pgn x", "--pgn"},
        WrongCase{"lines_of_no_standard", "import MESSAGES/.0012 --lines 500", "--lines: 500 not in {486,576}"},
        WrongCase{"unknown_answer", "import MESSAGES/.0012 --answer maybe", "--answer: maybe not in {yes,no,cancel}"},
        WrongCase{"number_of_a_choice", "import MESSAGES/.0012 --answer 0", "--answer: 0 not in {yes,no,cancel}"},
        WrongCase{"empty_output", "import MESSAGES/.0012 --png ''", "--png: the path is empty"},
        WrongCase{"no_option_that_is_required", "export lib 1 2", "--out is required"},
        WrongCase{"number_too_large", "batch . 1 2 --jobs 257", "--jobs: Value 257 not in range 1 to 256"},
        WrongCase{"resume_without_a_library", "batch . 1 2 --resume", "--resume requires --library"}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace zel::test
