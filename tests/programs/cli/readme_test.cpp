#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

// The examples of the command in README.md, in order.
std::vector<std::string> ReadmeExamples() {
    constexpr std::string_view kIndent = "    ";
    std::ifstream readme(ZELTRANS_README);
    std::vector<std::string> examples;
    std::string line;
    while (std::getline(readme, line) && line != "## Use") {
    }
    while (std::getline(readme, line) && line != "## Limits") {
        // An example for a server begins with a prompt.
        if (line.starts_with(kIndent) && !line.starts_with("    $ ")) examples.push_back(line.substr(kIndent.size()));
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

// What some of the examples print, after what they are recognised by.
constexpr std::pair<std::string_view, const char*> kPrinted[] = {
    {"ls -a ", "\n.0001\n"},
    {"zeltrans info demo/disk/MESSAGES", "tab"},
    {"--warnings --answer no", "box: "},
    {"--resume", "\n1 message with warnings:\n  .0014  "},
    {" 1-5,14,20 ", "\n7 imported, 0 missing, 0 failed\n"},
    {" 10 21 ", "\n12 imported, 0 missing, 0 failed\n"},
    {" my-disk --library", "\n2 disks: 42 imported, 0 failed\n"},
    {"library list messages.zellib", "Margit Alden"},
    {"library search ", "headlines"},
    {"--list-formats", "contact-sheet"},
};

TEST(Readme, ItsExamplesGiveWhatItSays) {
    const CommandDisk disk;
    disk.Shell("mkdir -p build/demo/bin; ln -s " + CommandDisk::Quoted(ZELTRANS_COMMAND) + " build/demo/bin/zeltrans");
    ASSERT_EQ(disk.Shell("zeltrans sample demo/disk").exit_code, 0);
    const std::vector<std::string> examples = ReadmeExamples();
    ASSERT_GE(examples.size(), 20U);
    const std::string& path = examples.front();
    ASSERT_TRUE(path.starts_with("export PATH="));
    std::size_t recognised = 0;
    for (const std::string& example : examples) {
        const CommandResult result = disk.Shell("unset -f zeltrans; " + path + "; " + example);
        EXPECT_EQ(result.exit_code, 0) << example << "\n" << result.err;
        const bool is_silent = example == path || example.starts_with("zeltrans settings set ") ||
                               example.starts_with("zeltrans thumbnail ");
        const std::size_t file = example.find(" > ");
        EXPECT_EQ(result.out.empty(), is_silent || file != std::string::npos) << example;
        EXPECT_TRUE(file == std::string::npos || !disk.Read(example.substr(file + 3)).empty()) << example;
        for (const auto& [part, text] : kPrinted) {
            if (example.find(part) == std::string::npos) continue;
            EXPECT_THAT(result.out + result.err, testing::HasSubstr(text)) << example;
            ++recognised;
        }
    }
    EXPECT_GE(recognised, std::size(kPrinted));
}

}  // namespace

}  // namespace zel::test
