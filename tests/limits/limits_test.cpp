// Files that request far more than they need: no command takes long for them or uses much memory.
#include <cstdio>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "host/library/library.h"
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
    /// A command that makes more of a file may take this many times as much.
    int more = 1;
};

/// In this order: an export reads the library that the batch has written.
constexpr CommandCase kCommands[] = {
    {"MESSAGES/.0001", "info MESSAGES/.0001"},
    {"MESSAGES/.0001", "verify --json MESSAGES/.0001"},
    {"MESSAGES/.0001", "import MESSAGES/.0001 --maps . --png a.png --json a.json --fields"},
    {"MESSAGES/.0001", "import MESSAGES/.0001 --maps . --png b.png --tt-convert"},
    {"MESSAGES/.0001", "import MESSAGES/.0001 --trace c.trace --pixels --warnings"},
    {"MESSAGES/.0001", "batch . 1 1 --maps . --disk '' --library lib --out out"},
    {"MACHINE/.0001", "info MACHINE/.0001"},
    {"MACHINE/.0001", "verify --json MACHINE/.0001"},
    {"MACHINE/.0001", "font MACHINE/.0001 --png font.png"},
    {"MACHINE/.0001", "font MACHINE/.0001 --kit kit --otf", 12},
    {"changed", "diff MESSAGES/.0001 changed --maps . --fonts MACHINE --picture diff.png"},
    {"changed-font", "diff MACHINE/.0001 changed-font --picture diff.png"},
    {"lib", "library texts lib --csv"},
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
    // A message with one more byte, and a font with another colour in its first run code.
    MeasureCommand(
        "sh -c \"cp --sparse=always MESSAGES/.0001 changed; printf x >>changed; cp --sparse=always MACHINE/.0001 "
        "changed-font && printf '\\3' | dd of=changed-font bs=1 seek=2185 conv=notrunc\"",
        disk.Path(), 60);
    const double seconds = GetParam().seconds * kSlowMachine * kSlowBuild;
    for (const auto& [needs, arguments, more] : kCommands) {
        if (!exists(disk.Path() / needs)) continue;
        const std::string line = std::string("'" ZELTRANS_COMMAND "' ") + arguments;
        const Cost cost = MeasureCommand(line, disk.Path(), static_cast<unsigned>(4 * more * seconds) + 1);
        std::printf("%8.3f s %8.1f MiB  exit %d  %s\n", cost.seconds, cost.mebibytes, cost.exit_code, arguments);
        // What can't be compared has the exit code 2.
        EXPECT_TRUE(cost.exit_code >= 0 && cost.exit_code <= (needs[0] == 'c' ? 2 : 1))
            << arguments << ": " << cost.exit_code;
        EXPECT_LE(cost.seconds, more * seconds) << arguments;
#if !defined(ZELTRANS_SANITIZED)  // whose shadow takes much memory
        EXPECT_LE(cost.mebibytes, more * GetParam().mebibytes) << arguments;
#endif
    }
}

INSTANTIATE_TEST_SUITE_P(Each, Limits, testing::ValuesIn(AllHostileFiles()),
                         [](const auto& row) { return std::string(row.param.name); });

/// A library of recordings whose documents have as many bytes as those of usual messages.
void WriteLibrary(const std::filesystem::path& file, int count) {
    std::string document = R"({"rows":[{"y":0,"top":0,"depth":20}],"characters":[)";
    for (int x = 0; x < 60; ++x)
        document += (x == 0 ? "" : ",") + std::string(R"({"text":"a","row":0,"x":)") + std::to_string(x * 10) + "}";
    document += "]}";
    library::Library library(file, library::Access::kWrite);
    std::vector<library::Recording> recordings;
    for (int i = 0; i < count; ++i) {
        library::Recording recording;
        recording.disk = "disk " + std::to_string(i / 1000);
        recording.number = i % 1000;
        recording.document = document;
        recordings.push_back(std::move(recording));
        if (recordings.size() < 500) continue;
        library.Record(recordings);
        recordings.clear();
    }
    library.Record(recordings);
}

TEST(LibraryTexts, NeedNoMoreMemoryForMoreRecordings) {
    const HostileDisk disk;
    [[maybe_unused]] double mebibytes[2] = {};
    for (int large = 0; large < 2; ++large) {
        WriteLibrary(disk.Path() / std::to_string(large), large == 0 ? 500 : 5000);
        const Cost cost =
            MeasureCommand("'" ZELTRANS_COMMAND "' library texts --csv " + std::to_string(large), disk.Path(), 60);
        EXPECT_EQ(cost.exit_code, 0);
        mebibytes[large] = cost.mebibytes;
        std::printf("%8.3f s %8.1f MiB\n", cost.seconds, cost.mebibytes);
    }
#if !defined(ZELTRANS_SANITIZED)  // whose allocator keeps what is freed
    // The texts of 4500 recordings are 0.5 MiB, their documents 8 MiB.
    EXPECT_LE(mebibytes[1], mebibytes[0] + 2);
#endif
}

}  // namespace

}  // namespace zel::limits
