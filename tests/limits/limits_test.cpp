// Files that request far more than they need: no command takes long for them or uses much memory.
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "limits/hostile_files.h"
#include "limits/measured_command.h"

namespace zel::limits {

namespace {

/// A slow or busy machine.
constexpr double kSlowMachine = 6;
#if defined(ZELTRANS_SANITIZED)
constexpr double kSlowBuild = 20;
#elif defined(ZELTRANS_UNOPTIMISED)
constexpr double kSlowBuild = 8;
#else
constexpr double kSlowBuild = 1;
#endif

struct CommandCase {
    /// The command is run if the disk has this file.
    const char* needs;
    /// Arguments, for a shell.
    const char* arguments;
};

/// In this order: an export reads the library that the batch has written.
constexpr CommandCase kCommands[] = {
    {"MESSAGES/.0001", "info MESSAGES/.0001"},
    {"MESSAGES/.0001", "import MESSAGES/.0001 --maps . --png a.png --json a.json --fields"},
    {"MESSAGES/.0001", "import MESSAGES/.0001 --maps . --png b.png --tt-convert"},
    {"MESSAGES/.0001", "import MESSAGES/.0001 --trace c.trace --pixels --warnings"},
    {"MESSAGES/.0001", "batch . 1 1 --maps . --disk '' --library lib --out out"},
    {"MACHINE/.0001", "info MACHINE/.0001"},
    {"MACHINE/.0001", "font MACHINE/.0001 --png font.png"},
    {"lib", "library list lib"},
    {"lib", "library show lib 1"},
    {"lib", "library search lib a"},
    {"lib", "export lib 1 1 --out json --format json"},
    {"lib", "export lib 1 1 --out html --format html"},
    {"lib", "export lib 1 1 --out png --format png --format sheet"},
    {"lib", "export lib 1 1 --out key --format key-fill"},
};

class Limits : public testing::TestWithParam<HostileFiles> {};

TEST_P(Limits, HoldForEachCommand) {
    const HostileDisk disk;
    GetParam().write(disk);
    const double seconds = GetParam().seconds * kSlowMachine * kSlowBuild;
    for (const auto& [needs, arguments] : kCommands) {
        if (!exists(disk.Path() / needs)) continue;
        const std::string line = std::string("'" ZELTRANS_COMMAND "' ") + arguments;
        const Cost cost = MeasureCommand(line, disk.Path(), static_cast<unsigned>(4 * seconds) + 1);
        std::printf("%8.3f s %8.1f MiB  exit %d  %s\n", cost.seconds, cost.mebibytes, cost.exit_code, arguments);
        EXPECT_TRUE(cost.exit_code == 0 || cost.exit_code == 1) << arguments << ": " << cost.exit_code;
        EXPECT_LE(cost.seconds, seconds) << arguments;
#if !defined(ZELTRANS_SANITIZED)  // whose shadow takes much memory
        EXPECT_LE(cost.mebibytes, GetParam().mebibytes) << arguments;
#endif
    }
}

INSTANTIATE_TEST_SUITE_P(Each, Limits, testing::ValuesIn(AllHostileFiles()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace zel::limits
