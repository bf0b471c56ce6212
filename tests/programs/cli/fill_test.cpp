#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// Beside the small disk a demonstration disk, whose message .0013 is a form.
class FillCommand : public testing::Test {
  protected:
    FillCommand() { m_disk.Shell("zeltrans sample d"); }

    CommandResult Fill(const std::string& arguments, const std::string& table = {}) const {
        if (!table.empty()) std::ofstream(m_disk / "t.csv") << table;
        return m_disk.Shell("zeltrans fill d/MESSAGES/.0013 " + arguments);
    }

    CommandDisk m_disk;
};

TEST_F(FillCommand, ListsTheFields) {
    EXPECT_THAT(Fill("--list").out, HasSubstr("f3     -                    2  3 Lantern Shade 32    "));
    const CommandResult result = Fill("--list --json");
    const json field = json::parse(result.out.substr(0, result.out.find('\n')));
    EXPECT_EQ(field["address"], "NAME");
    EXPECT_EQ(field["text"], "Ada Tolley");
    EXPECT_EQ(m_disk.Shell("zeltrans fill MESSAGES/.0012 --list").exit_code, 0);
    EXPECT_THAT(m_disk.Shell("zeltrans fill MESSAGES/.0020 --list").err,
                StartsWith("zeltrans: MESSAGES/.0020: is an RGBA picture"));
}

TEST_F(FillCommand, MakesEachRecordsOutputsAsAnImportDoes) {
    const CommandResult result = Fill(
        "--data t.csv --name-column file --out out --format png --format json --format html --format sheet "
        "--library lib --write w --field TOWN=Bath --json",
        "File;NAME;f3\r\nann;\"Ann; L\";West\r\nbob;;\r\n");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(json::parse(result.out.substr(0, result.out.find('\n')))["files"].size(), 4U);
    EXPECT_EQ(m_disk.Shell("ls out w").out,
              "out:\nann.html\nann.json\nann.png\nbob.html\nbob.json\nbob.png\ncontact-sheet-001.png\nindex.html\n\n"
              "w:\nann\nbob\n");
    EXPECT_THAT(m_disk.Read("out/index.html"), HasSubstr("bob.html"));
    // The picture and the document are those of the message file.
    EXPECT_EQ(m_disk.Shell("zeltrans import w/ann --fonts d/MACHINE --png i.png -q && cmp i.png out/ann.png").exit_code,
              0);
    EXPECT_EQ(m_disk.Shell("zeltrans library show lib 1 --png l.png && cmp i.png l.png").exit_code, 0);
    EXPECT_THAT(m_disk.Shell("zeltrans library list lib").out, HasSubstr("t.csv"));
    EXPECT_THAT(m_disk.Shell("zeltrans fill w/ann --fonts d/MACHINE --list").out,
                testing::AllOf(HasSubstr("\"Ann; L\""), HasSubstr("\"Bath\""), HasSubstr("\"West\"")));
    EXPECT_THAT(m_disk.Shell("zeltrans fill w/bob --fonts d/MACHINE --list").out, Not(HasSubstr("Tolley")));

    // Nothing is replaced without being asked.
    const std::string again = "--data t.csv --name-column file --out out --library lib";
    const CommandResult kept = Fill(again);
    EXPECT_EQ(kept.exit_code, 1);
    EXPECT_THAT(kept.err, HasSubstr("t.csv: record 1 (line 2): lib: number 1 of \"t.csv\" is recorded already"));
    EXPECT_THAT(Fill("--data t.csv --name-column file --out out").err, HasSubstr("out/ann.png: exists already"));
    EXPECT_EQ(Fill(again + " --overwrite").out, "2 records: 2 filled; 2 files; 2 recordings\n");
}

TEST_F(FillCommand, ReportsEachFaultAndDoesTheOtherRecords) {
    const CommandResult result = Fill("--data t.csv --name-column file --write w",
                                      "file,NAME,TOWN,colour\n"
                                      "a,A name that is too long for it,\xE2\x82\xAC,red\n"
                                      "b,B,Bath,red\n"
                                      "B,C,Bath,red\n"
                                      "../c,D,Bath,red\n"
                                      ".d,D,Bath,red\n"
                                      "CON,D,Bath,red\n"
                                      "a\xE2\x80\xAE,D,Bath,red\n"
                                      ",D,Bath,red\n"
                                      "e,E\n");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(m_disk.Shell("ls -A w").out, "b\n");
    EXPECT_EQ(result.out, "9 records: 1 filled, 8 not done; 1 file\n");
    EXPECT_EQ(result.ErrorLines(), 10) << result.err;
    for (
        const char* line :
        {"column \"colour\" matches no field; the fields are NAME, WHOLE LINE, TOWN, f3, 17 CHARACTERS LON, ANY FONT\n",
         "record 1 (line 2): NAME: the text is ", "record 1 (line 2): TOWN: font 3 \"Lantern Shade 32\" has no glyph ",
         "record 3 (line 4): another record has the name \"B\"\n", "record 4 (line 5): \"../c\" can't be the name",
         "record 5 (line 6): \".d\" can't", "record 6 (line 7): \"CON\" can't", "record 7 (line 8): \"a",
         "record 8 (line 9): the name is empty\n", "record 9 (line 10): has 2 values, and the heading has 4 columns\n"})
        EXPECT_THAT(result.err, HasSubstr(std::string("zeltrans: t.csv: ") + line));
}

TEST_F(FillCommand, RefusesWhatCantBeDone) {
    struct {
        const char* arguments;
        int exit_code;
        const char* error;
    } const cases[] = {
        {"", 2, "--data, --field or --list"},
        {"--data t.csv", 2, "--out, --library or --write"},
        {"--data t.csv --write -", 2, "standard output takes the file of --field alone"},
        {"--field NAME=x --out o --name-column y", 2, "--name-column requires --data"},
        {"--list --data t.csv", 2, "--list excludes --data"},
        {"--data none.csv --out o", 1, "none.csv: No such file"},
        {"--data d --out o", 1, "d: Is a directory"},
        {"--data t.csv --out d/MESSAGES", 1, "contains the files of a disk"},
        {"--data t.csv --write .", 1, "t.csv: can't be written: it is a file of ."},
        {"--data t.csv --library t.csv", 1, "t.csv: can't be written: it is the table"},
        {"--field NAME=x --write d/MESSAGES/.0099", 1, "contains the files of a disk"},
        {"--field XNAME=x --write w", 1, "--field XNAME=x: names no field"},
        {"--field NAME=x --field f0=y --write w", 1, "the field has a text already"},
    };
    std::ofstream(m_disk / "t.csv") << "NAME\nx\n";
    for (const auto& c : cases) {
        const CommandResult result = Fill(c.arguments);
        EXPECT_EQ(result.exit_code, c.exit_code) << c.arguments << result.err;
        EXPECT_THAT(result.err, HasSubstr(c.error)) << c.arguments;
    }
    EXPECT_EQ(m_disk.Read("t.csv"), "NAME\nx\n");
    EXPECT_THAT(Fill("--data t.csv --write w", "X,Y\n1,2\n").err, HasSubstr("none of its columns matches a field"));
    EXPECT_THAT(Fill("--data t.csv --write w --name-column Z", "NAME\n1\n").err, HasSubstr("no column \"Z\""));
    EXPECT_FALSE(std::filesystem::exists(m_disk / "w/.0001"));
    EXPECT_THAT(Fill("--data t.csv --write w", "X,Y\n").err, HasSubstr("t.csv: has no record"));
}

TEST_F(FillCommand, FillsASingleOneFromTheCommandLine) {
    EXPECT_EQ(Fill("--field f0='Ann Lee' --write w/0014 --out o").out, "1 message: 1 filled; 2 files\n");
    EXPECT_EQ(m_disk.Shell("ls -A o w").out, "o:\n0013.png\n\nw:\n0014\n");
    EXPECT_EQ(m_disk.Shell("zeltrans fill d/MESSAGES/.0013 --field 'name=Ann Lee' --write - | cmp - w/0014").exit_code,
              0);
    EXPECT_EQ(m_disk
                  .Shell("echo '{\"NAME\":\"Ann Lee\"}' | zeltrans fill d/MESSAGES/.0013 --data - --write w2 && "
                         "cmp w2/.0001 w/0014")
                  .exit_code,
              0);
}

TEST_F(FillCommand, SetsAnEditedTableOfTextsIntoItsMessages) {
    const std::string head = "disk,message,source,row,field,name,text\n";
    const std::string rest = "d,13,x,1,,,Name\nd,13,x,1,f0,NAME,Ada Tolley\nd,13,x,2,f2,TOWN,";
    const auto fill = [&](const std::string& table, const std::string& options) {
        std::ofstream(m_disk / "t.csv") << table;
        return m_disk.Shell("zeltrans fill d --data t.csv " + options);
    };
    EXPECT_EQ(fill(head + rest + "\n", "--write w").out, "0 messages: 0 filled; 1 without a change\n");
    EXPECT_EQ(fill(head + rest + "Bath\n", "--write w --out o").out, "1 message: 1 filled; 2 files\n");
    EXPECT_EQ(m_disk.Shell("ls -A o w").out, "o:\n0013.png\n\nw:\n.0013\n");
    EXPECT_EQ(Fill("--field TOWN=Bath --write one && cmp one w/.0013").exit_code, 0);

    const std::pair<std::string, const char*> faults[] = {
        {"d,13,x,1,,,Names\n", "row 1 has another text, which is no field's and can't be changed"},
        {"d,13,x,1,f0,OTHER,x\n", "its name is \"NAME\" in the message and \"OTHER\" in the table"},
        {"d,13,x,1,f9,,x\n", "the message has no such field"},
        {"d,x,x,1,f0,NAME,x\n", "\"x\" is no number of a message"},
        {"d,99,x,1,f0,NAME,x\n", ".0099"},
        {"d,13,x,1,f0,NAME,x\nd,14,x,0,,,\nd,13,x,1,f0,NAME,y\n", "don't follow each other"},
        {"d,13,x,1,f0,NAME,x\nother,14,x,1,f0,NAME,x\n", "1 message of other disks than \"d\" passed over; --disk"},
    };
    for (const auto& [lines, fault] : faults) {
        const CommandResult result = fill(head + lines, "--write w3 --overwrite");
        EXPECT_EQ(result.exit_code, 1) << lines;
        EXPECT_THAT(result.err, HasSubstr(fault)) << lines;
    }
    EXPECT_THAT(fill("NAME\nx\n", "--write w").err, HasSubstr("is a directory, which a table of \"library texts\""));
}

TEST_F(FillCommand, SetsTheTableOfALibraryAsItWasWritten) {
    m_disk.Shell(
        "zeltrans fill d/MESSAGES/.0013 --field NAME='+Ann' --write d2/.0013; mv d d1; mkdir -p d/MESSAGES; "
        "cp -r d1/MACHINE d; cp d1/MESSAGES/.* d/MESSAGES; cp d2/.0013 d/MESSAGES; "
        "zeltrans batch d --library lib; zeltrans library texts lib --csv --out t.csv; "
        "zeltrans library texts lib --json --out t.json");
    for (const char* table : {"t.csv", "t.json"}) {
        const CommandResult result = m_disk.Shell(std::string("zeltrans fill d --write w --data ") + table);
        EXPECT_EQ(result.exit_code, 0) << result.err;
        EXPECT_THAT(result.out, StartsWith("0 messages: 0 filled; "));
    }
    const CommandResult result = m_disk.Shell(
        "sed -i \"s/f0,NAME,'+Ann/f0,NAME,Bob/; s/f0,NOTICE,.*\\r/f0,NOTICE,Now\\r/\" t.csv; zeltrans fill d --write w "
        "--data t.csv && "
        "ls -A w");
    EXPECT_THAT(result.out, testing::EndsWith(".0013\n.0017\n")) << result.out << result.err;
    EXPECT_EQ(m_disk.Shell("zeltrans fill d1/MESSAGES/.0013 --field NAME=Bob --write bob && cmp bob w/.0013").exit_code,
              0);
}

TEST_F(FillCommand, FillsManyRecordsInConstantMemory) {
    constexpr char kPeak[] =
        "import resource, subprocess, sys; subprocess.check_call(sys.argv[1:]); "
        "print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)";
    const auto peak = [&](int records) {
        std::ofstream table(m_disk / "many.csv");
        table << "NAME,TOWN\n";
        for (int n = 0; n < records; ++n) table << "P " << n << ",T\n";
        table.close();
        const CommandResult result =
            m_disk.Shell("python3 -c " + CommandDisk::Quoted(kPeak) + " " + CommandDisk::Quoted(ZELTRANS_COMMAND) +
                         " fill d/MESSAGES/.0013 --data many.csv --jobs 1 -q --overwrite --write many");
        EXPECT_EQ(result.exit_code, 0) << result.err;
        return result.exit_code == 0 ? std::stoi(result.out) : 0;
    };
    [[maybe_unused]] const int few = peak(10);
    [[maybe_unused]] const int many = peak(1000);
#if !defined(__SANITIZE_ADDRESS__)  // whose allocator keeps what is freed
    // In KB; a message file has almost two.
    EXPECT_LT(many, few + 1000);
#endif
    EXPECT_EQ(m_disk.Shell("ls -A many | wc -l").out, "1000\n");
}

}  // namespace

}  // namespace zel::test
