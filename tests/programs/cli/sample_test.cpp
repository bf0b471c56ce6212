#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::EndsWith;
using testing::HasSubstr;

TEST(SampleCommand, WritesADiskAndSuggestsCommandsThatWork) {
    const CommandDisk disk;
    const CommandResult written = disk.Shell("zeltrans sample \"my disk's\"");
    EXPECT_EQ(written.exit_code, 0) << written.err;
    const std::size_t next = written.out.find("Next:\n");
    ASSERT_NE(next, std::string::npos);
    const CommandResult typed = disk.Shell("set -e\n" + written.out.substr(next + 6));
    EXPECT_EQ(typed.exit_code, 0) << typed.err;
    EXPECT_THAT(typed.out, HasSubstr("my disk's: 37 files"));
    EXPECT_THAT(typed.out, EndsWith("; wrote message.png\n"));
    EXPECT_EQ(typed.err, "");
}

}  // namespace

}  // namespace zel::test
