#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "programs/cli/command_disk.h"

namespace zel::test {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

class ExportCommand : public testing::Test {
  protected:
    ExportCommand() { m_disk.Shell("zeltrans batch . 12 20 --library lib --disk ''"); }

    CommandDisk m_disk;
};

TEST_F(ExportCommand, WritesEachFormatAndAValidManifest) {
    const CommandResult result = m_disk.Shell(
        "zeltrans export lib .0000 9999 --out out --format png --format json && cd out && sha256sum -c --quiet "
        "SHA256SUMS");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_EQ(result.out, "2 messages, 6 files in out\n");
    EXPECT_EQ(m_disk.Shell("ls out").out, "0012.json\n0012.png\n0020.json\n0020.png\nSHA256SUMS\nmanifest.json\n");
    EXPECT_EQ(json::parse(m_disk.Read("out/0012.json"))["number"], 12);
}

// The fields of the message have a font that is missing.
TEST_F(ExportCommand, MakesTemplatesAndGraphicsFromTheLibraryAlone) {
    const CommandResult result = m_disk.Shell(
        "rm -r MESSAGES MACHINE && zeltrans export lib --out out --format template --format ograf --fit pixel");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(result.err,
                HasSubstr("note: 0012: template: field f0 \"NAME\" can't be filled and is left out: font 31"));
    EXPECT_THAT(result.err, HasSubstr("zeltrans: 4 faults in the export, the first: 0012: template: field f0"));
    EXPECT_EQ(m_disk.Shell("cd out && find . -type f | sort && sha256sum -c --quiet SHA256SUMS").out,
              "./0012.html\n./0012.zip\n./0012/0012.ograf.json\n./0012/graphic.mjs\n./0012/thumbnail.png\n./0020.html\n"
              "./0020.zip\n./0020/0020.ograf.json\n./0020/graphic.mjs\n./0020/thumbnail.png\n./SHA256SUMS\n"
              "./manifest.json\n");
    EXPECT_THAT(m_disk.Shell("zeltrans export lib --out out --format html").err,
                HasSubstr("templates with the names of pages"));
    EXPECT_EQ(m_disk.Shell("zeltrans export lib 20 --out both --format html --format template && ls both").out,
              "1 message, 5 files in both\n0020.html\n0020_template.html\nSHA256SUMS\nindex.html\nmanifest.json\n");
}

TEST_F(ExportCommand, TracesTheModulesBatchExport) {
    const CommandResult result = m_disk.Shell("zeltrans export lib 11 12 --out out --trace -");
    EXPECT_THAT(
        result.out,
        StartsWith("{\"event\":\"send\",\"message\":1125,\"target\":\"main\",\"wParam\":11,\"id\":11,\"answer\":0}\n"));
    EXPECT_THAT(result.out,
                HasSubstr("\\\\out\"}\n{\"event\":\"end\",\"road\":\"export\",\"next_id\":\"\",\"y_offset\":"));
}

TEST_F(ExportCommand, ReportsWhatItCannotDo) {
    m_disk.Shell("zeltrans batch . 12 12 --library lib --disk other");
    struct {
        const char* arguments;
        int exit_code;
        const char* error;
    } const cases[] = {
        {"lib 1 9999 --out out", 1, "zeltrans: lib: contains several disks; choose one with --disk: \"\", \"other\"\n"},
        {"lib 1 9999 --out out --disk x", 1, "zeltrans: lib: contains no disk named \"x\"\n"},
        {"lib 1 11 --out out --disk other", 1, "zeltrans: lib: contains no message of this range\n"},
        {"lib 3 1 --out out --disk other", 1, "zeltrans: lib: Invalid Range: 0003 - 0001 \n"},
        {"nolib 1 2 --out out", 1, "zeltrans: nolib: "},
        {"MESSAGES/.0012 1 2 --out out", 1, "zeltrans: MESSAGES/.0012: "},
        {"lib 1 2 --out MESSAGES/.0012 --disk other", 1, "zeltrans: MESSAGES/.0012: "},
        {"lib 1 2 --out MESSAGES/.0012/out --disk other", 1, "zeltrans: MESSAGES/.0012"},
        {"lib 1 2 --out out --format gif", 2, "--format: \"gif\" is not a format"},
    };
    for (const auto& row : cases) {
        const CommandResult result = m_disk.Shell(std::string("zeltrans export ") + row.arguments);
        EXPECT_EQ(result.exit_code, row.exit_code) << row.arguments;
        EXPECT_THAT(result.err, StartsWith(row.error)) << row.arguments;
    }
    EXPECT_FALSE(std::filesystem::exists(m_disk / "new"));
    EXPECT_THAT(m_disk.Shell("zeltrans export --list-formats").out, StartsWith("png "));
}

TEST(ManyDisks, AreConvertedIntoOneLibraryBySeveralProcessesAtOnce) {
    const CommandDisk disk;
    disk.Shell("mkdir archive; for d in a b c d; do mkdir archive/$d; cp -r MESSAGES MACHINE archive/$d; done");
    disk.Shell(
        "for d in a b c d; do zeltrans batch archive/$d 0 30 --disk $d --settings s/$d --jobs 1 --library one & done; "
        "wait");
    EXPECT_EQ(disk.Shell("zeltrans library merge all one; zeltrans library merge all one").out,
              "one: 8 added, 0 replaced, 0 unchanged\none: 0 added, 0 replaced, 8 unchanged\n");
}

}  // namespace

}  // namespace zel::test
