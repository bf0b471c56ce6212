#include <chrono>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "host/library/library.h"
#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsSupersetOf;

/// Everything of a library but the times.
std::vector<std::string> Contents(const std::filesystem::path& file) {
    std::vector<std::string> contents;
    library::Library library(file, library::Access::kRead);
    for (const library::LibraryEntry& entry : library.List()) {
        const library::Recording recording = library.Find(entry.key).value();
        std::string text = recording.disk + "|" + std::to_string(recording.number) + "|" + recording.options + "|" +
                           recording.document + "|" + recording.text + "|" + recording.picture;
        for (const library::SourceFile& source : recording.sources) text += "|" + source.path + " " + source.sha256;
        contents.push_back(std::move(text));
    }
    return contents;
}

TEST(BatchCommand, RecordsWritesAndReports) {
    const CommandDisk disk;
    disk.Shell("head -c 200 MESSAGES/.0012 > MESSAGES/.0013");
    const CommandResult result = disk.Shell("zeltrans batch . 12 0020 --library lib --out 'a b' --report r.json");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out,
              ".0012 imported; not found or not readable: font 31; a row ends where it is used\n"
              ".0013 failed: ./MESSAGES/.0013: the message file is damaged; \"zeltrans info\" shows where\n"
              ".0020 imported\n"
              "2 imported, 6 missing, 1 failed\n");
    EXPECT_EQ(result.err, "zeltrans: ./MESSAGES/.0013: the message file is damaged; \"zeltrans info\" shows where\n");
    const json report = json::parse(disk.Read("r.json"));
    EXPECT_EQ(report["missing"], 6);
    EXPECT_EQ(report["failures"][0]["number"], 13);
    EXPECT_EQ(report["warnings"][0]["number"], 12);
    const library::Recording recording = library::Library(disk / "lib", library::Access::kRead).Find({"", 12}).value();
    EXPECT_THAT(recording.text, HasSubstr("NEWS"));
    EXPECT_EQ(recording.picture, disk.Read("a b/0012.png"));
    EXPECT_EQ(recording.sources.size(), 3U) << "the message, its font, and the font that is missing";
    EXPECT_EQ(json::parse(recording.document), json::parse(disk.Read("a b/0012.json")));
}

TEST(BatchCommand, GivesTheSameForAnyNumberOfJobs) {
    const CommandDisk disk;
    disk.Shell("for n in 21 22 23 24 25 26; do cp MESSAGES/.0012 MESSAGES/.00$n; done");
    disk.Shell("zeltrans batch . 1 30 --library one --jobs 1; zeltrans batch . 1 30 --library four --jobs 4");
    EXPECT_EQ(Contents(disk / "one").size(), 8U);
    EXPECT_EQ(Contents(disk / "one"), Contents(disk / "four"));
}

struct ResumeCase {
    const char* name;
    const char* change;   // shell
    const char* options;  // of the second run
    const char* counts;
};
void PrintTo(const ResumeCase& row, std::ostream* out) {
    *out << row.name;
}
class Resume : public testing::TestWithParam<ResumeCase> {};

TEST_P(Resume, LeavesOutWhatIsRecordedFromUnchangedFiles) {
    const CommandDisk disk;
    disk.Shell("zeltrans batch . 12 20 --library lib --out out");
    disk.Shell(GetParam().change);
    const CommandResult result =
        disk.Shell(std::string("zeltrans batch . 12 20 --library lib --out out --resume ") + GetParam().options);
    EXPECT_THAT(result.out, HasSubstr(GetParam().counts));
    EXPECT_THAT(disk.Read("out/0012.png"), testing::StartsWith("\x89PNG"));
}
INSTANTIATE_TEST_SUITE_P(
    Each, Resume,
    testing::Values(
        ResumeCase{"nothing_changed", "true", "", "0 imported, 7 missing, 0 failed, 2 unchanged"},
        ResumeCase{"touched_only", "touch MESSAGES/.0012 MACHINE/.0012", "",
                   "0 imported, 7 missing, 0 failed, 2 unchanged"},
        ResumeCase{"a_picture_is_gone", "rm out/0012.png", "", "0 imported, 7 missing, 0 failed, 2 unchanged"},
        ResumeCase{"the_message", "printf x >> MESSAGES/.0012", "", "1 imported, 7 missing, 0 failed, 1 unchanged"},
        ResumeCase{"a_font", "printf x >> MACHINE/.0012", "", "1 imported, 7 missing, 0 failed, 1 unchanged"},
        ResumeCase{"the_missing_font_came", "cp MACHINE/.0012 MACHINE/.0031", "", "1 imported"},
        ResumeCase{"other_options", "true", "--tt-convert", "2 imported, 7 missing, 0 failed"},
        ResumeCase{"another_disk", "true", "--disk other", "2 imported, 7 missing, 0 failed"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(BatchCommand, LosesNothingReportedWhenItIsKilled) {
    const CommandDisk disk;
    disk.Shell("for n in $(seq 1000 1080); do cp MESSAGES/.0012 MESSAGES/.$n; done; rm MESSAGES/.0020");
    disk.Shell("zeltrans batch . 12 1080 --library whole");
    const std::vector<std::string> whole = Contents(disk / "whole");
    ASSERT_EQ(whole.size(), 82U);
    const std::string run = "zeltrans batch . 12 1080 --library lib --resume --out out";
    for (const char* seconds : {"0.01", "0.03", "0.06", "0.1"}) {
        const CommandResult result =
            disk.Shell("(" + run + ") & sleep " + seconds + "; pkill -9 -P $! ; kill -9 $!; wait 2>/dev/null; true");
        if (!std::filesystem::exists(disk / "lib")) continue;
        std::vector<std::string> reported, held;
        std::istringstream lines(result.out);
        for (std::string line; std::getline(lines, line);) {
            if (line.find(" imported;") == 5) reported.push_back(std::to_string(std::stoi(line.substr(1))));
        }
        library::Library library(disk / "lib", library::Access::kRead);
        for (const library::LibraryEntry& entry : library.List()) held.push_back(std::to_string(entry.key.number));
        EXPECT_THAT(held, IsSupersetOf(reported));
    }
    disk.Shell(run);
    EXPECT_EQ(Contents(disk / "lib"), whole);
    EXPECT_EQ(disk.Shell("ls out/*.png | wc -l; ls -A out | wc -l").out, "82\n164\n");
}

TEST(BatchCommand, EndsCleanlyAtAnInterrupt) {
    const CommandDisk disk;
    disk.Shell("for n in $(seq 1000 1999); do ln -s .0012 MESSAGES/.$n; done");
    const CommandResult result =
        disk.Shell(CommandDisk::Quoted(ZELTRANS_COMMAND) +
                   " batch . 1000 1999 --library lib --settings s >o & pid=$!; "
                   "until grep -qs imported o; do sleep 0.01; done; kill -INT $pid; wait $pid");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(disk.Read("o"), testing::ContainsRegex("\n[0-9]+ imported, 0 missing, 0 failed\n$"));
    EXPECT_EQ(result.err, "zeltrans: .: stopped before the end of the range\n");
}

}  // namespace

}  // namespace zel::test
