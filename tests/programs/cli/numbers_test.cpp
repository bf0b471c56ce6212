// The numbers and disks that the commands take.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/library/library.h"
#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::EndsWith;
using testing::HasSubstr;

struct NumbersCase {
    const char* line;  // after "zeltrans "
    int exit_code;
    const char* out_end;
    const char* err;  // part of it
};

/// Fails for each case whose results differ.
void ExpectEach(const CommandDisk& disk, std::span<const NumbersCase> cases) {
    for (const NumbersCase& row : cases) {
        const CommandResult result = disk.Shell(std::string("zeltrans ") + row.line);
        EXPECT_EQ(result.exit_code, row.exit_code) << row.line << "\n" << result.err;
        EXPECT_THAT(result.out, EndsWith(row.out_end)) << row.line;
        EXPECT_THAT(result.err, HasSubstr(row.err)) << row.line;
    }
}

TEST(Numbers, OfABatchAreAListTwoNumbersOrTheWholeDisk) {
    const CommandDisk disk;
    disk.Shell("mkdir 20 1-2; cp -r MESSAGES MACHINE 20; cp -r MESSAGES MACHINE 1-2");
    constexpr NumbersCase kCases[] = {
        {"batch .", 0, "\n2 imported, 0 failed\n", ""},
        {"batch . 12", 0, "\n1 imported, 0 missing, 0 failed\n", ""},
        {"batch . .0011-20", 0, "\n2 imported, 8 missing, 0 failed\n", ""},
        {"batch . 30,0012,1-2,11-13,2", 0, "\n1 imported, 5 missing, 0 failed\n", ""},
        {"batch . 12 .0020", 0, "\n2 imported, 7 missing, 0 failed\n", ""},
        {"batch . .20", 0, "\n1 imported, 0 missing, 0 failed\n", ""},
        {"batch ./20 12", 0, "\n1 imported, 0 missing, 0 failed\n", ""},
        {"batch 20 1-2 .12", 2, "", "NUMBERS: \"1-2\" is a message number and also a directory: write ./1-2 for"},
        {"batch 20 ./1-2 .12", 0, "\n2 disks: 2 imported, 0 missing, 0 failed\n", ""},
        {"batch . 20-12", 2, "", "\"20-12\" ends before it begins"},
        {"batch . 1,,2", 2, "", "\"1,,2\" is not a list of message numbers such as"},
        {"batch . 1-", 2, "", "\"1-\" is not a list"},
        {"batch . 1-10000", 2, "", "\"1-10000\": message numbers end at 9999"},
        {"batch . 1-2,5 12", 2, "", "\"1-2,5\": give one list"},
        {"batch . 1 2 3", 2, "", "give one list such as 1,3,7-9, or FIRST LAST"},
        {"batch . 12 here", 2, "", "\"here\" after the numbers 12"},
        // The module's own messages.
        {"batch . 3 1", 1, "", "zeltrans: .: Invalid Range: 0003 - 0001 \n"},
        {"batch . 1 10000", 1, "", "zeltrans: .: Invalid Range: 0001 - 10000 \n"},
        {"batch . 0", 1, "", "zeltrans: .: Invalid Range: 0000 - 0000 \n"},
    };
    ExpectEach(disk, kCases);
}

TEST(Numbers, OfALibrarySelectWhatIsExportedAndRemoved) {
    const CommandDisk disk;
    disk.Shell("for n in 13 14 15 16; do cp MESSAGES/.0012 MESSAGES/.00$n; done; zeltrans batch . 12-20 --library lib");
    constexpr NumbersCase kCases[] = {
        {"export lib --out all", 0, "6 messages, 8 files in all\n", ""},
        {"export lib 13,15-20 --out some", 0, "4 messages, 6 files in some\n", ""},
        {"export lib 5-1 --out none", 2, "", "\"5-1\" ends before it begins"},
        {"library remove lib", 2, "", "NUMBERS is required"},
        {"library remove lib 14,99", 1, "", "zeltrans: lib: message .0099 is not recorded\n"},
        {"library remove lib 14-10", 2, "", "ends before it begins"},
        {"library remove lib 30-40", 1, "", "zeltrans: lib: no message of these numbers is recorded\n"},
        {"library remove lib 13,15-16", 0, ": removed .0016 from \"zeltrans it's\"\n", ""},
        {"library remove lib 13 99", 0, ": removed .0020 from \"zeltrans it's\"\n", ""},
        {"library list lib", 0, "lib: 1 recording, 1 with warnings\n  .0012  zeltrans it's  message  1 warning  NEWS\n",
         ""},
    };
    ExpectEach(disk, kCases);
}

TEST(WholeDisk, ReportsTheMessagesThatNoNumberSelects) {
    const CommandDisk disk;
    disk.Shell(
        "cd MESSAGES; for name in 0012 0013 .12 PROMO .00012 NEWS.0014; do cp .0012 $name; done; echo x >README; "
        "mkdir .0040");
    const CommandResult result = disk.Shell("zeltrans batch . --report r");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.err,
              "zeltrans: .: left out since no number from 0 to 9999 selects them: .00012 .12 0012 NEWS.0014 PROMO\n"
              "zeltrans: ./MESSAGES/.0040: a directory, not a message file\n");
    EXPECT_EQ(nlohmann::json::parse(disk.Read("r"))["left_out"],
              nlohmann::json({".00012", ".12", "0012", "NEWS.0014", "PROMO"}));
}

TEST(WholeDisk, IsResumedWithoutNumberZero) {
    const CommandDisk disk;
    disk.Shell("cp MESSAGES/.0012 MESSAGES/.0001; zeltrans batch . --library lib");
    EXPECT_THAT(disk.Shell("zeltrans batch . --library lib --resume").out,
                EndsWith("0 imported, 0 failed, 3 unchanged\n"));
    disk.Shell("cp MESSAGES/.0012 MESSAGES/.0000");
    EXPECT_THAT(disk.Shell("zeltrans batch . --library lib --resume").out,
                EndsWith("2 imported, 0 failed, 3 unchanged, 1 replaced\n"))
        << "the module runs no range that ends at 0";
}

/// Three disks, two of which have the same name, beside one that fails.
class SeveralDisks : public testing::Test {
  protected:
    SeveralDisks() {
        m_disk.Shell(
            "mkdir -p x/news y/news sport bad; for d in x/news y/news sport; do cp -r MESSAGES MACHINE $d; done; "
            "rm y/news/MESSAGES/.0020");
    }
    CommandDisk m_disk;
};

TEST_F(SeveralDisks, AreNamedByTheirFoldersAndOneThatFailsLeavesTheOthers) {
    const CommandResult result =
        m_disk.Shell("zeltrans batch x/news y/news bad sport 12-20 --library lib --out out --report r");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.out, testing::StartsWith("x/news:\n.0012 imported;"));
    EXPECT_THAT(result.out, EndsWith("4 disks: 5 imported, 22 missing, 0 failed; 1 disk not done completely\n"));
    EXPECT_THAT(result.err, testing::MatchesRegex("note: y/news: recorded as the disk \"news \\(2\\)\".*\n"
                                                  "zeltrans: bad: the message directory .* does not exist\n"));
    EXPECT_EQ(library::Library(m_disk / "lib", library::Access::kRead).Disks(),
              (std::vector<std::string>{"news", "news (2)", "sport"}));
    EXPECT_EQ(m_disk.Shell("cd out; ls -d */*.png").out,
              "news (2)/0012.png\nnews/0012.png\nnews/0020.png\nsport/0012.png\nsport/0020.png\n");
    const auto disks = nlohmann::json::parse(m_disk.Read("r"))["disks"];
    EXPECT_EQ(disks.size(), 4U);
    EXPECT_EQ(disks[1]["imported"], 1);
    EXPECT_THAT(disks[2]["failure"].get<std::string>(), HasSubstr("does not exist"));
    EXPECT_TRUE(disks[3]["failure"].is_null());
}

TEST_F(SeveralDisks, HaveNoPicturesInCommon) {
    EXPECT_EQ(m_disk.Shell("zeltrans batch x/news y/news 12-20 --out out").exit_code, 0);
    const std::string sums = "cd out; sha256sum */*.json";
    const std::string before = m_disk.Shell(sums).out;
    const CommandResult turned = m_disk.Shell("zeltrans batch y/news x/news 12-20 --out out");
    EXPECT_EQ(turned.err, "note: y/news: pictures in out/news (2)\n");
    EXPECT_EQ(m_disk.Shell(sums).out, before);
    const CommandResult other = m_disk.Shell("zeltrans batch sport 12 --out out/news");
    EXPECT_EQ(other.exit_code, 1);
    EXPECT_THAT(other.err, HasSubstr("out/news: contains the pictures of another disk, from /"));
    EXPECT_EQ(m_disk.Shell(sums).out, before);
}

TEST_F(SeveralDisks, AreEachNamedOnce) {
    constexpr NumbersCase kCases[] = {
        {"batch sport x/../sport 12", 2, "", "x/../sport: the disk is named twice"},
        {"batch sport x/news --library lib --disk a", 2, "", "--disk requires a single disk"},
        {"batch sport x/news --trace t", 2, "", "--trace requires a single disk"},
    };
    ExpectEach(m_disk, kCases);
}

}  // namespace

}  // namespace zel::test
