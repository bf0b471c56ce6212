#include <fstream>

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

TEST(Readme, ItsExamplesWork) {
    const CommandDisk disk;
    std::filesystem::create_directory(disk / "demo");
    ASSERT_EQ(disk.Shell("zeltrans sample demo/disk").exit_code, 0);
    const std::vector<std::string> examples = ReadmeExamples();
    EXPECT_GE(examples.size(), 9U);
    for (const std::string& example : examples) {
        const CommandResult result = disk.Shell(example);
        EXPECT_EQ(result.exit_code, 0) << example << "\n" << result.err;
        EXPECT_EQ(result.out.empty(), example.starts_with("zeltrans settings set ")) << example;
    }
}

}  // namespace

}  // namespace zel::test
