#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

// The examples of the command in README.md.
std::vector<std::string> ReadmeExamples() {
    constexpr std::string_view kExample = "    zeltrans ";
    std::ifstream readme(ZELTRANS_README);
    std::vector<std::string> examples;
    for (std::string line; std::getline(readme, line);) {
        if (line.starts_with(kExample)) examples.push_back(line.substr(4));
    }
    return examples;
}

// The indented lines below a heading of a page.
std::string ExampleBelow(const std::string& heading, const char* page) {
    std::ifstream in(page);
    std::string example, line;
    while (std::getline(in, line) && line != heading) {
    }
    while (std::getline(in, line) && !line.starts_with("    ")) {
    }
    for (; line.starts_with("    "); std::getline(in, line)) example += line.substr(4) + "\n";
    return example;
}

// Two disks in a directory "archive", and the command as a program, as the page assumes.
struct Archive {
    Archive() {
        disk.Shell("mkdir archive run.bin; ln -s " + CommandDisk::Quoted(ZELTRANS_COMMAND) +
                   " run.bin/zeltrans; "
                   "for d in one two; do mkdir archive/$d; cp -r MESSAGES MACHINE archive/$d; done");
    }
    CommandResult Run(const std::string& example) const {
        std::ofstream(disk / "run.example") << example;
        return disk.Shell(
            "export PATH=\"$PWD/run.bin:$PATH\" SLURM_ARRAY_TASK_ID=0 SLURM_TMPDIR=\"$PWD/run.tmp\"; "
            "mkdir -p run.tmp; bash -e run.example");
    }
    CommandDisk disk;
};

TEST(Scaling, TheExampleForOneMachineWorks) {
    const Archive archive;
    if (archive.disk.Shell("command -v parallel").exit_code != 0) GTEST_SKIP() << "GNU parallel is missing";
    const CommandResult result = archive.Run(ExampleBelow("## On one machine: GNU parallel", ZELTRANS_SCALING));
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_THAT(result.out, testing::HasSubstr("shards/two.zellib: 2 added"));
}

TEST(Scaling, TheExampleForAClusterWorks) {
    const Archive archive;
    archive.disk.Shell("ls archive >disks.txt");
    // One task takes every disk.
    std::string example = ExampleBelow("## On a cluster: a Slurm array", ZELTRANS_SCALING);
    const std::size_t step = example.find("i += 100");
    ASSERT_NE(step, std::string::npos);
    const CommandResult result =
        archive.Run(example.replace(step, 8, "i += 1") + "zeltrans library merge all.zellib shards/*.zellib");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_THAT(result.out, testing::HasSubstr("shards/two.zellib: 2 added"));
    EXPECT_TRUE(std::filesystem::exists(archive.disk / "reports/one.json"));
}

TEST(Readme, ItsExamplesWork) {
    const CommandDisk disk;
    std::filesystem::create_directory(disk / "demo");
    ASSERT_EQ(disk.Shell("zeltrans sample demo/disk").exit_code, 0);
    const std::vector<std::string> examples = ReadmeExamples();
    EXPECT_GE(examples.size(), 9U);
    for (const std::string& example : examples) {
        const CommandResult result = disk.Shell(example);
        EXPECT_EQ(result.exit_code, 0) << example << "\n" << result.err;
        EXPECT_THAT(result.out, testing::Not(testing::HasSubstr(": 0 recordings"))) << example;
        EXPECT_EQ(result.out.empty(),
                  example.starts_with("zeltrans settings set ") || example.starts_with("zeltrans thumbnail "))
            << example;
    }
}

}  // namespace

}  // namespace zel::test
