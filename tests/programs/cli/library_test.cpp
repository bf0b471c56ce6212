#include "host/library/library.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::HasSubstr;

/// Three recordings from two disks in a.zellib; b.zellib has one of them with other options.
class LibraryCommand : public testing::Test {
  protected:
    LibraryCommand() {
        library::Recording news = Numbered(12, "\n GOOD EVENING\nand welcome", "");
        news.fields = {{"Home", 1, 2, 3, 4}};
        news.warnings = {"font 31 is missing", "2 glyphs couldn't be drawn"};
        library::Recording other = Numbered(12, "Caf\xC3\xA9 \x1B[2J\xFF", "Disk B");
        library::Recording mark = Numbered(20, "", "Disk B");
        mark.kind = library::RecordingKind::kRgbaObject;
        mark.document.clear();
        library::Library(m_disk / "a.zellib", library::Access::kWrite).Record(std::vector{news, other, mark});
        other.options = "lines=576";
        library::Library(m_disk / "b.zellib", library::Access::kWrite)
            .Record(std::vector{other, mark, Numbered(5, "five", "")});
    }

    static library::Recording Numbered(int number, const std::string& text, const std::string& disk) {
        library::Recording recording;
        recording.disk = disk;
        recording.number = number;
        recording.text = text;
        recording.document = "{}";
        recording.picture = "a picture";
        recording.width = recording.height = 4;
        return recording;
    }

    CommandDisk m_disk;
};

struct LibraryCase {
    const char* arguments;
    const char* out;
    const char* err;
};

TEST_F(LibraryCommand, PrintsResultsAndErrors) {
    const LibraryCase cases[] = {
        {"list a.zellib",
         "a.zellib: 3 recordings, 1 with warnings\n"
         "  .0012          message      2 warnings  GOOD EVENING\n"
         "  .0012  Disk B  message                  Caf\xC3\xA9 \xEF\xBF\xBD[2J\xEF\xBF\xBD\n"
         "  .0020  Disk B  RGBA object\n",
         ""},
        {"list a.zellib --disk ''",
         "a.zellib: 1 recording, 1 with warnings\n  .0012  message  2 warnings  GOOD EVENING\n", ""},
        {"search a.zellib eve hom",
         "a.zellib: 1 recording, 1 with warnings\n  .0012  message  2 warnings  GOOD EVENING\n", ""},
        {"list a.zellib --limit 1",
         "a.zellib: the first 1 recording, 1 with warnings\n  .0012  message  2 warnings  GOOD EVENING\n",
         "note: the list continues with --after /.0012\n"},
        {"list a.zellib --limit 1 --after /.0012",
         "a.zellib: the next 1 recording\n  .0012  Disk B  message  Caf\xC3\xA9 \xEF\xBF\xBD[2J\xEF\xBF\xBD\n",
         "note: the list continues with --after 'Disk B/.0012'\n"},
        {"list a.zellib --limit 1 --after 'Disk B/12'",
         "a.zellib: the last 1 recording\n  .0020  Disk B  RGBA object\n", ""},
        {"list a.zellib --after 'Disk B/20'", "a.zellib: 0 recordings\n", ""},
        {"search a.zellib '!' --limit 2", "a.zellib: 0 recordings\n", ""},
        {"search a.zellib good --limit 1",
         "a.zellib: 1 recording, 1 with warnings\n  .0012  message  2 warnings  GOOD EVENING\n", ""},
        {"search a.zellib '\"' nothing", "a.zellib: 0 recordings\n", ""},
        {"show a.zellib .0020 --png p.png --json j.json", "wrote p.png\n",
         "note: the recording has no document; j.json was not written\n"},
        {"show a.zellib 12", "",
         "zeltrans: a.zellib: message .0012 is recorded from several disks; choose one with --disk: the unnamed disk, "
         "\"Disk B\"\n"},
        {"show a.zellib 7 --disk 'Disk B'", "", "zeltrans: a.zellib: message .0007 is not recorded from \"Disk B\"\n"},
        {"merge a.zellib b.zellib", "b.zellib: 1 added, 1 replaced, 1 unchanged\n", ""},
        {"merge new.zellib b.zellib missing", "",
         "zeltrans: missing: the library can't be opened: No such file or directory\n"},
        {"merge a.zellib b.zellib MESSAGES/.0012", "",
         "zeltrans: MESSAGES/.0012: it is not a library of recorded messages\n"},
        {"remove a.zellib 5", "a.zellib: removed .0005\n", ""},
        {"remove missing.zellib 5", "",
         "zeltrans: missing.zellib: the library can't be opened: No such file or directory\n"},
        {"list a.zellib --disk 'Disk C'", "a.zellib: 0 recordings\n", ""},
    };
    for (const LibraryCase& line : cases) {
        const CommandResult result = m_disk.Shell(std::string("zeltrans library ") + line.arguments);
        EXPECT_EQ(result.out, line.out) << line.arguments;
        EXPECT_EQ(result.err, line.err) << line.arguments;
        EXPECT_EQ(result.exit_code, std::string_view(line.err).starts_with("zeltrans:") ? 1 : 0) << line.arguments;
    }
    EXPECT_FALSE(std::filesystem::exists(m_disk / "new.zellib"));
    EXPECT_EQ(m_disk.Read("p.png"), "a picture");
    EXPECT_EQ(m_disk.Shell("zeltrans library show a.zellib 10000").exit_code, 2);
    EXPECT_EQ(m_disk.Shell("zeltrans library list a.zellib --after 'Disk B'").exit_code, 2);
    EXPECT_THAT(m_disk.Shell("zeltrans library show a.zellib 0012 --disk ''").out,
                HasSubstr("\n  Tab fields\n    Home: 1, 2 to 3, 4\n"));
}

TEST_F(LibraryCommand, WritesTheTextsAsATable) {
    library::Recording form = Numbered(7, "", "Disk, \"C\"");
    form.sources = {{"/disks/C/MESSAGES/.0007", {}, 7, std::string(64, 'a')}};
    const auto character = [](int row, int x, const char* text) {
        return R"({"text":")" + std::string(text) + R"(","row":)" + std::to_string(row) + R"(,"x":)" +
               std::to_string(x) + R"(},)";
    };
    // A field's ends are in it; a blank is an empty field's own.
    std::string characters = character(0, 10, "=") + character(0, 20, "1") + character(0, 199, "+") +
                             character(0, 200, "A") + character(0, 300, "\\\"") + character(0, 301, "Z") +
                             character(1, 50, " ");
    characters.pop_back();
    form.document = R"({"rows":[{"y":0,"top":0,"depth":20},{"y":30,"top":0,"depth":20}],"characters":[)" + characters +
                    R"(],"tab_fields":[{"name":"@N","row":0,"frame":{"left":200,"right":300}},)" +
                    R"({"name":"","row":1,"frame":{"left":40,"right":60}}]})";
    library::Library(m_disk / "a.zellib", library::Access::kWrite).Record(std::vector{form});
    const CommandResult csv = m_disk.Shell("zeltrans library texts a.zellib --csv");
    EXPECT_EQ(csv.out,
              "disk,message,source,row,field,name,text\r\n"
              "\"Disk, \"\"C\"\"\",7,/disks/C/MESSAGES/.0007,0,,,'=1 + Z\r\n"
              "\"Disk, \"\"C\"\"\",7,/disks/C/MESSAGES/.0007,0,f0,'@N,\"A \"\"\"\r\n"
              "\"Disk, \"\"C\"\"\",7,/disks/C/MESSAGES/.0007,1,f1,,\r\n");
    EXPECT_EQ(csv.exit_code, 0) << csv.err;
    const CommandResult lines =
        m_disk.Shell("zeltrans library texts a.zellib --json --disk 'Disk, \"C\"' --out t; tail -n 2 t");
    EXPECT_EQ(
        lines.out,
        "a.zellib: 3 texts of 1 recording; wrote t\n"
        R"({"version":1,"disk":"Disk, \"C\"","message":7,"source":"/disks/C/MESSAGES/.0007","row":0,"field":"f0",)"
        R"("name":"@N","text":"A \""})"
        "\n"
        R"({"version":1,"disk":"Disk, \"C\"","message":7,"source":"/disks/C/MESSAGES/.0007","row":1,"field":"f1",)"
        R"("name":"","text":""})"
        "\n");
    EXPECT_EQ(m_disk.Shell("zeltrans library texts a.zellib").exit_code, 2);
    EXPECT_EQ(m_disk.Shell("zeltrans library texts a.zellib --csv --json").exit_code, 2);
    const CommandResult library = m_disk.Shell("zeltrans library texts a.zellib --csv --out a.zellib");
    EXPECT_EQ(library.err, "zeltrans: a.zellib: can't be written: it is the library\n");
}

TEST_F(LibraryCommand, ReportsADocumentThatCannotBeReadAndWritesTheOthers) {
    library::Recording bad = Numbered(13, "", "");
    bad.document = "{";
    library::Library(m_disk / "a.zellib", library::Access::kWrite).Record(std::vector{bad});
    const CommandResult result = m_disk.Shell("zeltrans library texts a.zellib --csv");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err, HasSubstr("zeltrans: a.zellib: message .0013: "));
    EXPECT_EQ(result.ErrorLines(), 1);
}

}  // namespace

}  // namespace zel::test
