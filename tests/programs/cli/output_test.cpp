#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Outputs, AreCheckedBeforeTheImport) {
    const std::pair<const char*, const char*> cases[] = {
        {"--png run.out/no/a.png", "run.out/no/a.png: can't be written: its directory can't be made: Not a directory"},
        {"--trace /proc/no/a", "/proc/no/a: can't be written: its directory can't be made: No such file or directory"},
        {"--trace no/", "no/: can't be written: it is a directory"},
        {"--json run.out/a", "run.out/a: can't be written: Not a directory"},
        {"--png MESSAGES", "MESSAGES: can't be written: it is a directory"},
        {"--png /dev/null", "/dev/null: can't be written: it is not a regular file"},
        {"--png a.png --json run.out/a", "run.out/a: can't be written: Not a directory"}};
    const CommandDisk disk;
    const auto before = disk.Names();
    for (const auto& [options, error] : cases) {
        // The missing message is not reported, because the output comes first.
        const CommandResult result = disk.Shell(std::string("zeltrans import MESSAGES/.0099 ") + options);
        EXPECT_EQ(result.exit_code, 1) << options;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, std::string("zeltrans: ") + error + "\n");
        EXPECT_EQ(disk.Names(), before) << options;
    }
}

struct CollisionCase {
    const char* name;
    const char* line;
    const char* error;  // contained
};

class OutputCollision : public testing::TestWithParam<CollisionCase> {};

TEST_P(OutputCollision, IsRefusedAndChangesNoFile) {
    const CommandDisk disk;
    disk.Shell(
        "zeltrans batch . 12 12 --library lib; cp lib lib2; cp MESSAGES/.0012 loose; cp MACHINE/.0012 .0012; "
        "ln -s MESSAGES/.0012 link; ln MESSAGES/.0012 hard; ln -s MACHINE/.0012 new; ln -s . here; mkdir maps out; "
        "cp .0012 out; cp lib out/manifest.json; echo a = b >maps/typeface_list.txt");
    const std::string sums =
        "find . -path ./run.settings -prune -o -type f ! -name 'run.*' -print0 | sort -z | "
        "xargs -0 sha256sum";
    const std::string before = disk.Shell(sums).out;
    const CommandResult result = disk.Shell(GetParam().line);
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.ErrorLines(), 1);
    EXPECT_THAT(result.err, HasSubstr(": can't be written: "));
    EXPECT_THAT(result.err, HasSubstr(GetParam().error));
    EXPECT_EQ(disk.Shell(sums).out, before);
}

INSTANTIATE_TEST_SUITE_P(
    Each, OutputCollision,
    testing::Values(
        CollisionCase{"picture_on_the_message", "zeltrans import loose --fonts MACHINE --png loose",
                      "loose: can't be written: it is the message\n"},
        CollisionCase{"document_on_the_message", "zeltrans import loose --fonts MACHINE --json ./loose",
                      "it is the message"},
        CollisionCase{"trace_on_the_message", "zeltrans import loose --fonts MACHINE --trace here/loose",
                      "it is the message"},
        CollisionCase{"a_message_that_is_missing", "zeltrans import nosuch --trace nosuch", "it is the message"},
        CollisionCase{"by_a_link", "zeltrans import MESSAGES/.0012 --png link", "it is the message"},
        CollisionCase{"by_a_hard_link", "zeltrans import MESSAGES/.0012 --png hard", "it is the message"},
        CollisionCase{"on_another_message", "zeltrans import MESSAGES/.0012 --png MESSAGES/.0020",
                      "MESSAGES contains the files of a disk"},
        CollisionCase{"on_a_font", "zeltrans import loose --fonts MACHINE --png new",
                      "MACHINE contains the files of a disk"},
        CollisionCase{"new_file_in_a_disk", "zeltrans font .0012 --png MACHINE/a.png",
                      "MACHINE contains the files of a disk"},
        CollisionCase{"font_in_a_directory_of_another_name", "zeltrans import loose --fonts out --png out/.0012",
                      "it is a message or a font beside those that are read"},
        CollisionCase{"sheet_on_the_font", "zeltrans font .0012 --png .0012", "it is the font file"},
        CollisionCase{"on_the_file_of_browse",
                      "zeltrans import MESSAGES/.0012 --warnings --answer yes --browse loose --png loose",
                      "it is the file of --browse"},
        CollisionCase{"on_a_name_list", "zeltrans import loose --maps maps --png maps/typeface_list.txt",
                      "it is a name list"},
        CollisionCase{"on_the_settings",
                      "zeltrans settings --settings s set ZELFNTSaveOptions SkipWarnings 1 && "
                      "zeltrans import loose --settings s --json s/settings.sqlite; code=$?; rm -r s; exit $code",
                      "it is the file of the stored settings"},
        CollisionCase{"two_outputs", "zeltrans import MESSAGES/.0012 --png a --json ./a", "it is the file of --png"},
        CollisionCase{"two_outputs_in_a_new_directory",
                      "zeltrans import MESSAGES/.0012 --png no/sub/a --json ./no//x/../sub/a",
                      "it is the file of --png"},
        CollisionCase{"report_in_messages", "zeltrans batch . 12 20 --report MESSAGES/.0003",
                      "MESSAGES contains the files of a disk"},
        CollisionCase{"report_on_the_library", "zeltrans batch . 12 20 --library lib --report lib",
                      "it is the library"},
        CollisionCase{"trace_on_the_log_of_the_library", "zeltrans batch . 12 20 --library lib --trace lib-wal",
                      "it is the library"},
        CollisionCase{"pictures_in_messages", "zeltrans batch . 12 20 --out here/MESSAGES/sub",
                      "MESSAGES contains the files of a disk"},
        CollisionCase{"report_on_a_document", "zeltrans batch . 12 20 --out out --report out/0012.json",
                      "it is a file of out"},
        CollisionCase{"library_on_a_picture", "zeltrans batch . 12 20 --out new-out --library new-out/0012.png",
                      "it is a file of new-out"},
        CollisionCase{"recording_on_its_library", "zeltrans library show lib 12 --png lib", "it is the library"},
        CollisionCase{"recording_in_a_disk", "zeltrans library show lib 12 --json MESSAGES/a.json",
                      "MESSAGES contains the files of a disk"},
        CollisionCase{"library_merged_with_itself", "zeltrans library merge lib lib2 here/lib",
                      "it is a library to be merged"},
        CollisionCase{"export_trace_on_the_library", "zeltrans export lib 1 20 --out out --trace lib",
                      "it is the library"},
        CollisionCase{"export_on_its_library", "zeltrans export out/manifest.json 1 20 --out out",
                      "it is a file of out"},
        CollisionCase{"export_trace_on_a_list", "zeltrans export lib 1 20 --out out --trace out/SHA256SUMS",
                      "it is a file of out"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(Outputs, StayAsTheyWereWhenTheImportFails) {
    const CommandDisk disk;
    disk.Shell("echo old >a.png; echo old >a.json");
    const auto before = disk.Names();
    EXPECT_EQ(disk.Shell("zeltrans import MESSAGES/.0099 --png a.png --json a.json").exit_code, 1);
    EXPECT_EQ(disk.Read("a.png"), "old\n");
    EXPECT_EQ(disk.Read("a.json"), "old\n");
    EXPECT_EQ(disk.Names(), before);
}

TEST(Outputs, MayBeBesideTheirInputsAndShareADevice) {
    const CommandDisk disk;
    for (const std::string line :
         {"zeltrans import MESSAGES/.0012 --json /dev/null --trace /dev/null",
          "cp MESSAGES/.0012 12; zeltrans import 12 --fonts MACHINE --png 0012.png --json 12.json",
          "mkdir -p work/machine; zeltrans import MESSAGES/.0012 --png work/machine/a.png",
          "zeltrans batch . 12 20 --out a/out --library b/c/lib --report d/e.json --trace f/g --settings h/i && "
          "zeltrans library merge j/k/all b/c/lib && zeltrans library show b/c/lib 12 --png l/m.png --json n/o.json && "
          "zeltrans font MACHINE/.0012 --png p/q.png && zeltrans export j/k/all 1 20 --out r/s --trace t/u && "
          "ls a/out/0012.png d/e.json f/g h/i l/m.png n/o.json p/q.png r/s t/u",
          "mkdir out; zeltrans batch . 12 20 --out out --library out/lib --report out/report.json --trace out/trace"}) {
        const CommandResult result = disk.Shell(line);
        EXPECT_EQ(result.exit_code, 0) << line << "\n" << result.err;
    }
}

TEST(Outputs, ReplaceTheTargetOfALink) {
    const CommandDisk disk;
    EXPECT_EQ(disk.Shell("echo old >real; ln -s real a.png; ln -s new a.json; "
                         "zeltrans import MESSAGES/.0012 --png a.png --json a.json")
                  .exit_code,
              0);
    EXPECT_TRUE(std::filesystem::is_symlink(disk / "a.png"));
    EXPECT_THAT(disk.Read("real"), StartsWith("\x89PNG"));
    EXPECT_THAT(disk.Read("new"), StartsWith("{"));
}

TEST(Outputs, OnAFullDeviceAreAFailure) {
    const CommandDisk disk;
    for (const std::string line :
         {"zeltrans import MESSAGES/.0012 --trace /dev/full", "zeltrans import MESSAGES/.0012 --json /dev/full",
          "zeltrans import MESSAGES/.0012 --trace - >/dev/full", "zeltrans info MESSAGES/.0012 >/dev/full"}) {
        const CommandResult result = disk.Shell(line);
        EXPECT_EQ(result.exit_code, 1) << line;
        EXPECT_THAT(result.err, HasSubstr("written")) << line;
    }
}

}  // namespace

}  // namespace zel::test
