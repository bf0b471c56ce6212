// What the command reports about itself, and that "info" does not load the libraries for it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/sqlite_database.h"
#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
using testing::Not;

TEST(Version, ReportsRevisionCompilerAndLibrariesAtRunTime) {
    const CommandDisk disk;
    const std::string report = disk.Shell("zeltrans --version").out;
    EXPECT_THAT(report, ContainsRegex("^zeltrans [0-9]+\\.[0-9]+\\.[0-9]+\n"
                                      "revision ([0-9a-f]+(-modified)?|unknown)\n"
                                      "compiler [A-Za-z]+ [0-9.]+\n"
                                      "libraries SQLite [0-9.]+, libpng [0-9.]+, .*FreeType [0-9.]+"));
    EXPECT_THAT(report, HasSubstr(std::string("SQLite ") + base::SqliteVersion() + ","));
}

TEST(Version, CostsInfoNoLibrary) {
    const std::string loaded = CommandDisk().Shell("LD_TRACE_LOADED_OBJECTS=1 zeltrans").out;
    EXPECT_THAT(loaded, HasSubstr("libstdc++"));
    EXPECT_THAT(loaded, Not(ContainsRegex("sqlite|png|curl|freetype|isal")));
}

}  // namespace

}  // namespace zel::test
