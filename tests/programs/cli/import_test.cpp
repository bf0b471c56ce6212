#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

// Each line as an object; anything else fails the test.
std::vector<json> TraceEvents(const std::string& text) {
    std::vector<json> events;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        events.push_back(json::parse(line, nullptr, false));
        EXPECT_TRUE(events.back().is_object() && events.back().contains("event")) << line;
    }
    return events;
}

TEST(ImportCommand, WritesPictureAndDocumentAndPrintsASummary) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell("zeltrans import MESSAGES/.0012 --png 'a b.png' --json a.json");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.out, "MESSAGES/.0012: 3 rows, 4 characters, 2 tab fields; wrote a b.png, a.json\n");
    EXPECT_EQ(result.err, "note: not found or not readable: font 31; a row ends where it is used\n");
    EXPECT_THAT(disk.Read("a b.png"), StartsWith("\x89PNG"));
    const json document = json::parse(disk.Read("a.json"));
    EXPECT_EQ(document["id"], ".0012");
    EXPECT_EQ(document["rows"][0]["text"], "NEWS");
}

TEST(ImportCommand, PrintsOnlyTheTraceToStandardOutput) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell("zeltrans import MESSAGES/.0012 --trace - --pixels --png a.png");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    const json end = TraceEvents(result.out).back();
    EXPECT_EQ(end["event"].get<std::string>() + " " + end["road"].get<std::string>(), "end import");
    EXPECT_EQ(end["status"], 0);
    EXPECT_THAT(result.out, testing::ContainsRegex("\n\\{\"event\":\"char\",[^\n]*\"pixels\":"));
    EXPECT_THAT(result.out, testing::Not(HasSubstr("{\"event\":\"box\"")));
    EXPECT_EQ(disk.Shell("zeltrans import MESSAGES/.0012 --trace a.trace --pixels; cat a.trace").out,
              "MESSAGES/.0012: 3 rows, 4 characters, 2 tab fields\n" + result.out);
}

TEST(ImportCommand, PrintsEachTracedBoxOfTheDialog) {
    const CommandDisk disk;
    const CommandResult result =
        disk.Shell("zeltrans import MESSAGES/.0012 --warnings --answer yes --browse MACHINE/.0012 --trace -");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("{\"event\":\"file_dialog\""));
    EXPECT_THAT(result.err, HasSubstr("box: Couldn't Find Font File: Couldn't Find Zelmara! Font File: "));
    EXPECT_THAT(result.err, HasSubstr("\\MACHINE\\.0031 Would you like to browse for this file? (Yes)\nfile dialog: "));
    EXPECT_THAT(result.out, HasSubstr("\\\\MACHINE\\\\.0012\",\"font_name\""));
}

TEST(ImportCommand, FindsAMessageByItsNumberAndByAnAbsolutePath) {
    const CommandDisk disk;
    EXPECT_EQ(disk.Shell("zeltrans import MESSAGES/12").exit_code, 0);
    EXPECT_EQ(disk.Shell("zeltrans import \"$PWD/MESSAGES/.0012\" --fonts \"$PWD/MACHINE\" --maps .").exit_code, 0);
}

TEST(ImportCommand, WritesTheRgbaPictureThatWasInserted) {
    const CommandDisk disk;
    CommandResult result = disk.Shell("zeltrans import MESSAGES/.0020 --rgba background --png a.png");
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.out, "MESSAGES/.0020: an RGBA picture, inserted as a background; wrote a.png\n");
    EXPECT_EQ(
        result.err,
        "note: a.png: a picture of 4 lines belongs to no video standard; its pixel aspect ratio is that of NTSC\n");
    EXPECT_TRUE(std::filesystem::exists(disk / "a.png"));
    result = disk.Shell("zeltrans import MESSAGES/.0020 --rgba cancel --png b.png");
    EXPECT_EQ(result.out, "MESSAGES/.0020: an RGBA picture, not inserted\n");
    EXPECT_EQ(result.err, "note: MESSAGES/.0020 was not inserted; b.png was not written\n");
    result = disk.Shell("truncate -s 200 MESSAGES/.0020; zeltrans import MESSAGES/.0020 --png b.png");
    EXPECT_EQ(result.err, "note: MESSAGES/.0020: the picture is cut short by the file's end; b.png was not written\n");
}

TEST(ImportCommand, StoresItsSettingsInTheGivenDirectory) {
    const CommandDisk disk;
    EXPECT_EQ(disk.Shell("zeltrans import MESSAGES/.0012 --settings 'my settings'").exit_code, 0);
    EXPECT_TRUE(std::filesystem::exists(disk / "my settings"));
    EXPECT_FALSE(std::filesystem::exists(disk / "run.settings"));
}

TEST(ImportCommand, ReportsAFailureInOneLineAndWritesOnlyTheTrace) {
    const CommandDisk disk;
    const std::string deep = std::string(120, 'd') + "/" + std::string(120, 'e');
    disk.Shell("head -c 1000 MESSAGES/.0012 >cut; cp MESSAGES/.0012 MESSAGES/0012.msg; mkdir -p " + deep +
               "; cp -r MESSAGES MACHINE " + deep);
    const struct {
        std::string arguments;
        int status;         // at the end of the trace
        std::string error;  // after "zeltrans: "
    } cases[] = {
        {"nowhere/.0012 --fonts MACHINE", 2, "nowhere/.0012: the message directory "},
        {"cut --fonts MACHINE", 4, "cut: the message file is damaged"},
        {"MESSAGES/0012.msg", 3, "MESSAGES/0012.msg: the module uses the text after a name's first dot"},
        {deep + "/MESSAGES/.0012", 1, deep + "/MESSAGES/.0012: the path of the "},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.arguments);
        const CommandResult result =
            disk.Shell("zeltrans import " + row.arguments + " --png a.png --json a.json --trace -");
        EXPECT_EQ(result.exit_code, 1);
        EXPECT_EQ(result.ErrorLines(), 1);
        EXPECT_THAT(result.err, StartsWith("zeltrans: " + row.error));
        EXPECT_EQ(TraceEvents(result.out).back()["status"], row.status);
        EXPECT_FALSE(std::filesystem::exists(disk / "a.png") || std::filesystem::exists(disk / "a.json"));
    }
}

}  // namespace

}  // namespace zel::test
