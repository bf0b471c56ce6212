// Archives as disks.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sqlite3.h>

#include "base/sqlite_database.h"
#include "programs/cli/command_disk.h"
#include "support/archive_writer.h"

namespace zel::test {

namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// Some messages of the demonstration disk, one of them without its font and one an RGBA picture, in "boxed". The
/// directory for temporary files is "tmp", and empty after each test.
class ArchiveCommand : public testing::Test {
  protected:
    ArchiveCommand() {
        m_disk.Shell(
            "mkdir tmp; zeltrans sample boxed; for file in boxed/MESSAGES/.0*; do case $file in *06|*14|*20) ;; *) "
            "rm $file;; esac; done");
    }
    ~ArchiveCommand() override { EXPECT_THAT(samples_test::NamesIn(m_disk / "tmp"), IsEmpty()); }

    CommandResult Run(const std::string& line) const { return m_disk.Shell("export TMPDIR=\"$PWD/tmp\"; " + line); }

    /// The files of "boxed" in a folder of an archive.
    std::vector<StoredEntry> Entries(const std::string& folder) const {
        std::vector<StoredEntry> entries;
        for (const std::string part : {"MESSAGES", "MACHINE"}) {
            for (const std::string& name : samples_test::NamesIn(m_disk / ("boxed/" + part)))
                entries.push_back({folder + part + "/" + name, m_disk.Read("boxed/" + part + "/" + name)});
        }
        return entries;
    }

    /// Every value of every table of a library, except the times of recording and the tables of the index, which depend
    /// on how the recordings were distributed to transactions.
    std::vector<std::string> Tables(const std::string& library) const {
        base::SqliteDatabase database(m_disk / library, base::SqliteDatabase::Opening::kExisting);
        EXPECT_TRUE(database.Run("UPDATE recording SET recorded_at = ''"));
        std::vector<std::string> names, values;
        for (auto table = database.Prepare(
                 "SELECT name FROM sqlite_schema WHERE type = 'table' AND name NOT LIKE 'search\\_%' ESCAPE '\\'");
             table.Next();)
            names.push_back(table.Text(0));
        for (const std::string& name : names) {
            sqlite3_stmt* rows = nullptr;
            EXPECT_EQ(sqlite3_prepare_v2(database.Handle(), ("SELECT * FROM " + name).c_str(), -1, &rows, nullptr), 0);
            while (sqlite3_step(rows) == SQLITE_ROW) {
                std::string& value = values.emplace_back(name);
                for (int column = 0; column < sqlite3_column_count(rows); ++column) {
                    const void* bytes = sqlite3_column_blob(rows, column);
                    const auto size = static_cast<std::size_t>(sqlite3_column_bytes(rows, column));
                    value += '|' + std::string(static_cast<const char*>(bytes), bytes != nullptr ? size : 0);
                }
            }
            sqlite3_finalize(rows);
        }
        return values;
    }

    const CommandDisk m_disk;
};

TEST_F(ArchiveCommand, RecordsWhatTheUnpackedDisksGive) {
    // Under the same path, since paths are recorded.
    Run("mkdir box; cp -r boxed box/NEWS; cp -r boxed box/SPORT; rm box/SPORT/MESSAGES/.0006; "
        "zeltrans batch box/NEWS box/SPORT --library unpacked --maps boxed; rm -r box");
    const std::vector<std::string> expected = Tables("unpacked");
    ASSERT_GT(expected.size(), 40U);
    std::vector<StoredEntry> entries = Entries("SPORT/");
    std::erase_if(entries, [](const StoredEntry& entry) { return entry.name == "SPORT/MESSAGES/.0006"; });
    for (const StoredEntry& entry : Entries("NEWS/")) entries.push_back(entry);
    for (const StoredAs& form : {StoredAs{"zip"}, {"pax", "gzip"}, {"iso9660"}}) {
        WriteArchive(m_disk / "box", form, entries);
        const CommandResult result = Run("rm -f packed; zeltrans batch box --library packed --maps boxed");
        EXPECT_EQ(result.exit_code, 0) << result.err;
        EXPECT_TRUE(Tables("packed") == expected) << form.format;
    }
    // Unchanged files are recognised, although they are in another temporary directory.
    EXPECT_THAT(Run("zeltrans batch box --library packed --maps boxed --resume").out,
                HasSubstr("2 disks: 0 imported, 0 failed, 5 unchanged\n"));
    EXPECT_THAT(Run("zeltrans settings").out, Not(HasSubstr("zeltrans-")));
}

TEST_F(ArchiveCommand, NamesDisksAndTheirFiles) {
    WriteArchive(m_disk / "top.tar.gz", {"pax", "gzip"}, Entries(""));
    CommandResult result = Run("zeltrans batch top.tar.gz 6 --library l --out o");
    EXPECT_EQ(result.exit_code, 0) << result.err;
    EXPECT_THAT(samples_test::NamesIn(m_disk / "o"), ElementsAre("0006.json", "0006.png"));
    result = Run("zeltrans library list l --json");
    EXPECT_THAT(result.out, HasSubstr(R"({"version":1,"disk":"top",)"));
    EXPECT_THAT(result.out, HasSubstr("/top.tar.gz/MESSAGES/.0006\""));
    EXPECT_THAT(m_disk.Read("o/0006.json"), Not(HasSubstr("/tmp/zeltrans-")));

    std::vector<StoredEntry> entries = Entries("old/A/");
    entries.push_back({"new/A/MESSAGES/.0006", "broken"});
    entries.push_back({"new/A/MACHINE/.0012", "broken"});
    WriteArchive(m_disk / "two.zip", {"zip"}, entries);
    result = Run("zeltrans batch two.zip boxed 6,14 --library l --out both --json");
    EXPECT_EQ(result.exit_code, 1);
    EXPECT_THAT(samples_test::NamesIn(m_disk / "both"), ElementsAre("A", "A (2)", "boxed"));
    EXPECT_THAT(result.out, HasSubstr(R"("disk":"two.zip/old/A","number":6,)"));
    EXPECT_THAT(result.err, HasSubstr("/two.zip/new/A/MESSAGES"));
    EXPECT_THAT(result.out + result.err, Not(HasSubstr("tmp/zeltrans-")));

    result = Run("zeltrans info two.zip; zeltrans info two.zip --json");
    EXPECT_THAT(result.out, HasSubstr("  old/A/MESSAGES/.0006  message  "));
    EXPECT_THAT(result.out, HasSubstr(R"({"version":1,"name":"two.zip/old/A/MESSAGES/.0006","kind":"message",)"));
    EXPECT_THAT(result.out + result.err, Not(HasSubstr("tmp/zeltrans-")));
}

struct FaultCase {
    const char* line;
    int exit_code;
    const char* err;  // part of standard error
    const char* out = "";
};

TEST_F(ArchiveCommand, TellsWhatIsWrongAndImportsTheRest) {
    std::vector<StoredEntry> entries = Entries("D/");
    entries.push_back({"../MESSAGES/.0001", "x"});
    WriteArchive(m_disk / "hostile.tar", {"gnutar"}, entries);
    WriteArchive(m_disk / "good.zip", {"zip"}, Entries("D/"));
    WriteArchive(m_disk / "cut.tar", {"ustar"}, Entries("D/"));
    fs::resize_file(m_disk / "cut.tar", fs::file_size(m_disk / "cut.tar") - 20000);
    WriteArchive(m_disk / "loose.zip", {"zip"}, {{"D/.0001", "x"}});
    entries.back() = {"E/MESSAGES/.0001", "x"};
    WriteArchive(m_disk / "two.zip", {"zip"}, entries);
    Run("echo text >text");
    const FaultCase cases[] = {
        {"batch hostile.tar", 1,
         "zeltrans: hostile.tar: refused: ../MESSAGES/.0001: its name leads out of the archive\n",
         "3 imported, 0 failed"},
        {"batch cut.tar", 1, "the archive is cut short or damaged here: ", "3 imported, 0 failed"},
        {"batch loose.zip", 1, "zeltrans: loose.zip: no disk: the archive contains no folder MESSAGES\n"},
        {"batch text", 1,
         "zeltrans: text: it is neither a directory nor an archive that can be read (zip, tar, ISO 9660)\n"},
        {"batch two.zip --library l --disk D", 1, "two.zip: --disk and --trace need a single disk"},
        {"batch good.zip --library good.zip", 1, "good.zip"},
        {"batch good.zip --library l --disk X --strict", 1, "with warnings", "3 imported, 0 failed"},
        {"info hostile.tar", 1, "zeltrans: hostile.tar: refused: ../MESSAGES/.0001: ", "D/MESSAGES/.0006  message"},
        {"info text loose.zip", 1, "zeltrans: loose.zip: not a kind that the import reads"},
        {"batch good.zip 6", 0, "", "1 imported, "},
    };
    const std::string good = m_disk.Read("good.zip");
    for (const FaultCase& row : cases) {
        const CommandResult result = Run(std::string("zeltrans ") + row.line);
        EXPECT_EQ(result.exit_code, row.exit_code) << row.line;
        EXPECT_THAT(result.err, HasSubstr(row.err)) << row.line;
        EXPECT_THAT(result.out, HasSubstr(row.out)) << row.line;
    }
    EXPECT_EQ(m_disk.Read("good.zip"), good);
}

TEST_F(ArchiveCommand, LeavesNoTemporaryFilesWhenItIsInterrupted) {
    std::vector<StoredEntry> entries;
    const std::string message = m_disk.Read("boxed/MESSAGES/.0006");
    for (int number = 1; number < 2000; ++number)
        entries.push_back({"MESSAGES/.0" + std::to_string(1000 + number).substr(1), message});
    entries.push_back({"MACHINE/.0012", m_disk.Read("boxed/MACHINE/.0012")});
    WriteArchive(m_disk / "large.tar", {"ustar"}, entries);
    // While the archive is unpacked, and while its messages are recorded.
    for (const std::string reached : {"ls tmp/*/MESSAGES/.0*", "ls -d l"}) {
        const CommandResult result =
            Run("rm -f l; env --default-signal=INT " + CommandDisk::Quoted(ZELTRANS_COMMAND) +
                " batch large.tar --library l --jobs 1 >/dev/null & until " + reached +
                " >/dev/null 2>&1; do kill -0 $! || break; done; kill -INT $!; wait $!; echo $?; ls tmp");
        EXPECT_THAT(result.out, AnyOf("130\n", "0\n")) << reached << result.err;  // 0 where it was done before
    }
}

}  // namespace

}  // namespace zel::test
