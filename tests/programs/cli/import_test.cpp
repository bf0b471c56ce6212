#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using nlohmann::json;
using testing::Contains;
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

std::vector<std::string> Kinds(const std::vector<json>& events) {
    std::vector<std::string> kinds;
    for (const json& event : events) kinds.push_back(event.value("event", ""));
    return kinds;
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
    const std::vector<json> events = TraceEvents(result.out);
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.back()["event"], "end");
    EXPECT_EQ(events.back()["road"], "import");
    EXPECT_EQ(events.back()["status"], 0);
    EXPECT_THAT(Kinds(events), testing::Not(Contains("box")));
    const auto character =
        std::ranges::find(events, "char", [](const json& event) { return event.value("event", ""); });
    ASSERT_NE(character, events.end());
    EXPECT_TRUE(character->contains("pixels"));
    EXPECT_EQ(disk.Shell("zeltrans import MESSAGES/.0012 --trace a.trace --pixels; cat a.trace").out,
              "MESSAGES/.0012: 3 rows, 4 characters, 2 tab fields\n" + result.out);
}

TEST(ImportCommand, PrintsEachTracedBoxOfTheDialog) {
    const CommandDisk disk;
    const CommandResult result =
        disk.Shell("zeltrans import MESSAGES/.0012 --warnings --answer yes --browse MACHINE/.0012 --trace -");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    const std::vector<json> events = TraceEvents(result.out);
    const auto kinds = Kinds(events);
    EXPECT_THAT(kinds, Contains("file_dialog"));
    std::size_t boxes = 0;
    std::istringstream lines(result.err);
    for (std::string line; std::getline(lines, line);) boxes += line.starts_with("box: ") ? 1 : 0;
    EXPECT_EQ(boxes, static_cast<std::size_t>(std::ranges::count(kinds, "box")));
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

struct FailureCase {
    const char* name;
    const char* line;   // of shell
    int status;         // at the end of the trace
    const char* error;  // after "zeltrans: "
};
void PrintTo(const FailureCase& failure, std::ostream* out) {
    *out << failure.name;
}

class ImportFailure : public testing::TestWithParam<FailureCase> {};

TEST_P(ImportFailure, PrintsOneLineWithTheFileAndTheReason) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell(std::string(GetParam().line) + " --png a.png --json a.json --trace -");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.ErrorLines(), 1);
    EXPECT_THAT(result.err, StartsWith(std::string("zeltrans: ") + GetParam().error));
    const std::vector<json> events = TraceEvents(result.out);
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.back()["status"], GetParam().status);
    EXPECT_FALSE(std::filesystem::exists(disk / "a.png"));
    EXPECT_FALSE(std::filesystem::exists(disk / "a.json"));
}

INSTANTIATE_TEST_SUITE_P(
    Each, ImportFailure,
    testing::Values(FailureCase{"missing_message", "zeltrans import MESSAGES/.0099", 3, "MESSAGES/.0099: "},
                    FailureCase{"missing_font_directory", "zeltrans import MESSAGES/.0012 --fonts nowhere", 1,
                                "MESSAGES/.0012: the font directory "},
                    FailureCase{"missing_message_directory", "zeltrans import nowhere/.0012 --fonts MACHINE", 2,
                                "nowhere/.0012: the message directory "},
                    FailureCase{"font_as_message", "zeltrans import MACHINE/.0012 --fonts MACHINE", 4,
                                "MACHINE/.0012: not a message file but a font file"},
                    FailureCase{"nothing_beside_no_fonts", "zeltrans import nosuch", 1,
                                "nosuch: there is no such message file"},
                    FailureCase{"directory_as_message", "zeltrans import MESSAGES --fonts MACHINE", 3,
                                "MESSAGES: a directory, not a message file"},
                    FailureCase{"message_name_with_a_second_dot",
                                "cp MESSAGES/.0012 MESSAGES/0012.msg; zeltrans import MESSAGES/0012.msg", 3,
                                "MESSAGES/0012.msg: the module uses the text after a name's first dot"},
                    FailureCase{"cut_message", "head -c 1000 MESSAGES/.0012 >cut; zeltrans import cut --fonts MACHINE",
                                4, "cut: the message file is damaged"}),
    [](const auto& row) { return std::string(row.param.name); });

struct EndlessCase {
    const char* name;
    const char* arguments;
    const char* error;  // contained
};
void PrintTo(const EndlessCase& row, std::ostream* out) {
    *out << row.name;
}
class EndlessInput : public testing::TestWithParam<EndlessCase> {};

TEST_P(EndlessInput, IsRefusedAtOnce) {
    const CommandDisk disk;
    disk.Shell(
        "mkdir lists; mkfifo MESSAGES/.0030 MACHINE/.0030 fifo; "
        "mkfifo lists/typeface_list.txt lists/bitstream_fontlist.txt; ln -s /dev/zero MESSAGES/.0031");
    const CommandResult result =
        disk.Shell("timeout 10 " + CommandDisk::Quoted(ZELTRANS_COMMAND) + " " + GetParam().arguments);
    EXPECT_EQ(result.exit_code, std::string_view(GetParam().error).empty() ? 0 : 1) << "124 if it hangs";
    EXPECT_THAT(result.err, HasSubstr(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    Each, EndlessInput,
    testing::Values(EndlessCase{"message", "import MESSAGES/.0030", "a pipe, not a message file"},
                    EndlessCase{"message_by_dialog", "import MESSAGES/.0030 --warnings", "MESSAGES/.0030: "},
                    EndlessCase{"device", "import MESSAGES/.0031 --png a.png", "a device, not a message file"},
                    EndlessCase{"without_a_font_directory", "import fifo", "a pipe, not a message file"},
                    EndlessCase{"batch", "batch . 30 31 --library lib",
                                "2 numbers failed, the first: ./MESSAGES/.0030: a pipe"},
                    EndlessCase{"font", "font MACHINE/.0030", "a pipe, not a font file"},
                    EndlessCase{"browsed", "import MESSAGES/.0012 --warnings --answer yes --browse MACHINE/.0030", ""},
                    EndlessCase{"lists", "import MESSAGES/.0012 --maps lists", ""},
                    EndlessCase{"lists_of_a_batch", "batch . 12 12 --maps lists --library lib", ""},
                    EndlessCase{"library", "library list fifo", "it is a pipe, not a library"},
                    EndlessCase{"info", "info fifo", "a pipe, not a file"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(ImportCommand, ReportsACancelledFontPromptAfterItsBoxes) {
    const CommandDisk disk;
    const CommandResult result = disk.Shell("zeltrans import MESSAGES/.0012 --warnings --answer cancel");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("(Cancel)\nzeltrans: MESSAGES/.0012: cancelled when a font was missing\n"));
}

TEST(ImportCommand, RejectsAPathThatIsTooLong) {
    const CommandDisk disk;
    const std::string deep = std::string(120, 'd') + "/" + std::string(120, 'e');
    const CommandResult result = disk.Shell("mkdir -p " + deep + " && cp -r MESSAGES MACHINE " + deep +
                                            " && zeltrans import " + deep + "/MESSAGES/.0012");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.ErrorLines(), 1);
    EXPECT_THAT(result.err, StartsWith("zeltrans: " + deep + "/MESSAGES/.0012: the path of the "));
    EXPECT_THAT(result.err, HasSubstr(" characters, and the module accepts 259"));
}

}  // namespace

}  // namespace zel::test
