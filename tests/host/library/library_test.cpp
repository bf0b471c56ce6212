#include "host/library/library.h"

#include <csignal>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <unistd.h>

#include "samples/scratch_directory.h"
#include "samples/write_file.h"

namespace zel::test {

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Access = library::Access;

/// A recording with a value in each of its parts; they depend on the number.
library::Recording Numbered(int number, const std::string& text = "Station identification",
                            const std::string& disk = "") {
    library::Recording recording;
    recording.disk = disk;
    recording.number = number;
    recording.recorded_at = "2026-11-22T23:51:32Z";
    recording.options = "lines=486";
    recording.document = R"({"rows":)" + std::to_string(number) + "}";
    recording.text = text;
    recording.fonts = {"Sans", "Serif"};
    recording.fields = {{"Score_Home", 1, 2, 30, number}, {"Clock", -5, 0, 7, 9}};
    recording.warnings.assign(static_cast<std::size_t>(number % 3), "font 31 is missing");
    recording.sources = {{"/disk/MESSAGES/." + std::to_string(number), {}, 700, std::string(64, 'a')},
                         {"/disk/MACHINE/.0012", 12, 900, std::string(64, 'b')}};
    recording.standard = VideoStandard::kPal;
    recording.width = 720;
    recording.height = 576;
    recording.picture = std::string("\x89PNG\0", 5) + std::string(20000, static_cast<char>(number));
    return recording;
}

std::string Dump(const library::Recording& r) {
    std::ostringstream out;
    out << r.disk << '|' << r.number << '|' << int(r.kind) << '|' << r.recorded_at << '|' << r.options << '|'
        << r.document << '|' << r.text << '|' << ActiveLines(r.standard) << '|' << r.width << 'x' << r.height << '|'
        << r.picture;
    for (const std::string& name : r.fonts) out << "|font " << name;
    for (const std::string& warning : r.warnings) out << "|warning " << warning;
    for (const auto& f : r.fields) out << '|' << f.name << f.left << ',' << f.top << ',' << f.right << ',' << f.bottom;
    for (const auto& s : r.sources) out << '|' << s.path << s.font_number.value_or(-1) << ' ' << s.size << s.sha256;
    return out.str();
}

std::vector<int> Numbers(const std::vector<library::LibraryEntry>& entries) {
    std::vector<int> numbers;
    for (const library::LibraryEntry& entry : entries) numbers.push_back(entry.key.number);
    return numbers;
}

class RecordedLibrary : public testing::Test {
  protected:
    /// Changes the file as another program might.
    void Tamper(const std::string& sql) const {
        sqlite3* database = nullptr;
        sqlite3_open(m_file.c_str(), &database);
        sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
        char* error = nullptr;
        EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, &error), SQLITE_OK) << error;
        sqlite3_close(database);
    }

    std::string Failure(Access access, std::chrono::milliseconds patience = std::chrono::milliseconds(20)) const {
        try {
            library::Library library(m_file, access, patience);
            for (const library::LibraryEntry& entry : library.List()) library.Find(entry.key);
            library.Search("station");
            if (access == Access::kWrite) library.Record(std::vector{Numbered(77)});
        } catch (const library::LibraryError& error) {
            return error.what();
        }
        return "";
    }

    samples_test::ScratchDirectory m_scratch;
    std::filesystem::path m_file = m_scratch.Path() / "lib #1?.zlib";
};

TEST_F(RecordedLibrary, ReturnsRecordingsUnchanged) {
    library::Recording rgba = Numbered(9999, "", "Disk B");
    rgba.kind = library::RecordingKind::kRgbaBackground;
    rgba.document.clear();
    rgba.sources.resize(1);
    library::Library(m_file, Access::kWrite).Record(std::vector{Numbered(3), rgba});
    library::Library library(m_file, Access::kRead);
    EXPECT_EQ(Dump(library.Find({"", 3}).value()), Dump(Numbered(3)));
    EXPECT_EQ(Dump(library.Find({"Disk B", 9999}).value()), Dump(rgba));
    EXPECT_EQ(library.Picture({"", 3}), Numbered(3).picture);
    EXPECT_EQ(library.Origin({"", 3})->sources.at(1).font_number, 12);
    EXPECT_FALSE(library.Find({"", 4}) || library.Origin({"", 4}) || library.Has({"Disk B", 3}));
    EXPECT_THAT(library.Disks(), ElementsAre("", "Disk B"));
    EXPECT_THAT(Numbers(library.List("Disk B")), ElementsAre(9999));
    EXPECT_THROW(library.Record(std::vector{Numbered(4)}), library::LibraryError);
}

TEST_F(RecordedLibrary, CorrectsTheStandardOfRgbaFilesOfEarlierVersions) {
    library::Library library(m_file, Access::kWrite);
    for (const auto& [kind, expected] : {std::pair(library::RecordingKind::kRgbaBackground, VideoStandard::kPal),
                                         std::pair(library::RecordingKind::kMessage, VideoStandard::kNtsc)}) {
        library::Recording recording = Numbered(1);
        recording.kind = kind;
        recording.standard = VideoStandard::kNtsc;
        library.Record(std::vector{recording});
        EXPECT_EQ(library.Find({"", 1})->standard, expected);
    }
}

TEST_F(RecordedLibrary, ForgetsReplacedAndRemovedRecordings) {
    library::Library library(m_file, Access::kWrite);
    library.Record(std::vector{Numbered(2, "stale words")});
    library::Recording bare;
    bare.number = 2;
    library.Record(std::vector{bare});
    EXPECT_EQ(Dump(library.Find({"", 2}).value()), Dump(bare));
    EXPECT_THAT(library.Search("stale"), IsEmpty());
    EXPECT_THAT(library.Search("clock"), IsEmpty());
    EXPECT_TRUE(library.Remove({"", 2}));
    EXPECT_FALSE(library.Remove({"", 2}));
    EXPECT_THAT(library.List(), IsEmpty());
}

TEST_F(RecordedLibrary, RecordsAllOrNothing) {
    library::Library library(m_file, Access::kWrite);
    EXPECT_THROW(library.Record(std::vector{Numbered(1), Numbered(10000)}), library::LibraryError);
    EXPECT_THAT(library.List(), IsEmpty());
}

TEST_F(RecordedLibrary, FindsPrefixesOfWords) {
    library::Library library(m_file, Access::kWrite);
    library.Record(
        std::vector{Numbered(1, "Caf\xC3\xA9 at NOON"), Numbered(2, "a \"quoted\" score*"), Numbered(3, "noon noon")});
    const std::pair<const char*, std::vector<int>> cases[] = {
        {"noo", {3, 1}},
        {"cafe no", {1}},
        {"oon", {}},
        {"\"quoted", {2}},
        {"score* AND", {}},
        {"NEAR(noon", {}},
        {"-noon", {3, 1}},
        {"text:noon", {}},
        {"!!! score", {1, 2, 3}},
        {"!!!", {}},
        {" \t ", {1, 2, 3}},
        {"/disk/MESSAGES/.2", {2}},
        {"home score_h", {1, 2, 3}},
        {"\xFF\xC3 ^{}()", {}},
        {"", {1, 2, 3}},
    };
    for (const auto& [words, found] : cases) {
        std::vector<int> numbers = Numbers(library.Search(words));
        if (found.size() == 3) std::ranges::sort(numbers);
        EXPECT_EQ(numbers, found) << words;
    }
}

TEST_F(RecordedLibrary, ReadsPartsOfAList) {
    library::Library library(m_file, Access::kWrite);
    for (const char* disk : {"", "B", "C"}) {
        for (int number = 0; number < 4; ++number) library.Record(std::vector{Numbered(number, "noon", disk)});
    }
    using Key = library::RecordingKey;
    const struct {
        std::optional<std::string> disk;
        library::ListPart part;
        std::vector<Key> keys;
    } cases[] = {
        {{}, {{}, 2}, {{"", 0}, {"", 1}}},
        {{}, {Key{"", 2}, 2}, {{"", 3}, {"B", 0}}},
        {{}, {Key{"B", 9999}, 1}, {{"C", 0}}},
        {{}, {Key{"A", 5}, 1}, {{"B", 0}}},
        {{}, {Key{"C", 3}}, {}},
        {"B", {Key{"", 2}, 9}, {{"B", 0}, {"B", 1}, {"B", 2}, {"B", 3}}},
        {"B", {Key{"B", 2}, 9}, {{"B", 3}}},
        {"B", {{}, 0}, {}},
    };
    for (const auto& row : cases) {
        std::vector<Key> keys;
        for (const library::LibraryEntry& entry : library.List(row.disk, row.part)) keys.push_back(entry.key);
        EXPECT_EQ(keys, row.keys) << row.disk.value_or("all") << ' ' << row.part.most;
    }
    library.Remove({"B", 2});
    EXPECT_THAT(library.DisksWith(2), ElementsAre("", "C"));
}

TEST_F(RecordedLibrary, FindsTheBestMatchesFirst) {
    library::Library library(m_file, Access::kWrite);
    // Recorded in another order than that of their numbers; some match equally well.
    const std::pair<int, const char*> recordings[] = {{8, "noon a b c d"}, {3, "noon noon"},    {7, "noon a"},
                                                      {2, "other"},        {5, "noon a b c d"}, {9, "noon b"},
                                                      {1, "noon a b"}};
    for (const auto& [number, text] : recordings) {
        library::Recording recording = Numbered(number, text);
        recording.sources.clear();
        library.Record(std::vector{recording});
    }
    const std::vector<int> all = {3, 7, 9, 1, 5, 8};
    for (std::size_t most = 0; most <= all.size() + 1; ++most) {
        const auto expected = std::vector(all.begin(), all.begin() + std::ptrdiff_t(std::min(most, all.size())));
        EXPECT_EQ(Numbers(library.Search("noon", most)), expected) << most;
    }
    EXPECT_EQ(Numbers(library.Search("noon")), all);
}

TEST_F(RecordedLibrary, ListsAsATableWithoutTexts) {
    library::Library library(m_file, Access::kWrite);
    library.Record(std::vector{Numbered(6, "noon", "B"), Numbered(1, "noon"), Numbered(4, "noon noon", "B"),
                               Numbered(2, "other", "C")});
    const struct {
        library::TableFilter filter;
        std::vector<int> numbers;
    } cases[] = {
        {{}, {1, 4, 6, 2}},    {{"", "B"}, {4, 6}},     {{"", {}, true}, {1, 4, 2}},  {{"", "B", true}, {4}},
        {{"noon"}, {4, 1, 6}}, {{"noon", "B"}, {4, 6}}, {{"noon", {}, true}, {4, 1}}, {{"", "none"}, {}},
    };
    for (const auto& row : cases) {
        const library::LibraryTable table = library.Table(row.filter);
        EXPECT_THAT(table.disks, ElementsAre("", "B", "C"));
        std::vector<library::RecordingId> ids;
        std::vector<int> numbers;
        for (const auto& line : table.rows) {
            ids.push_back(line.id);
            numbers.push_back(line.number);
        }
        EXPECT_EQ(numbers, row.numbers) << row.filter.words;
        const std::vector<library::LibraryEntry> entries = library.Entries(ids);
        ASSERT_EQ(entries.size(), ids.size());
        for (std::size_t i = 0; i < ids.size(); ++i) EXPECT_EQ(entries[i].key, table.KeyOf(table.rows[i]));
    }
    const library::LibraryTable table = library.Table({});
    library.Remove({"B", 4});
    EXPECT_EQ(Numbers(library.Entries(std::vector{table.rows[3].id, table.rows[1].id, table.rows[0].id})),
              (std::vector{2, 1}));
}

TEST_F(RecordedLibrary, MergesNewAndDifferentRecordings) {
    const std::filesystem::path other = m_scratch.Path() / "other";
    library::Recording same = Numbered(2), options = Numbered(3), font = Numbered(4), picture = Numbered(5);
    same.sources[0].path = same.sources[1].path = "/elsewhere";
    same.recorded_at = "later";
    options.options = "lines=576";
    font.sources[1].sha256.back() = 'c';
    picture.picture += '1';
    library::Library(other, Access::kWrite).Record(std::vector{Numbered(1), same, options, font, picture});
    library::Library library(m_file, Access::kWrite);
    library.Record(std::vector{Numbered(2), Numbered(3), Numbered(4), Numbered(5), Numbered(6)});
    const library::MergeCount first = library.Merge(other), second = library.Merge(other),
                              itself = library.Merge(m_file);
    EXPECT_THAT((std::vector{first.added, first.replaced, first.unchanged}), ElementsAre(1, 3, 1));
    EXPECT_THAT((std::vector{second.added, second.replaced, second.unchanged}), ElementsAre(0, 0, 5));
    EXPECT_EQ(itself.unchanged, 6);
    EXPECT_EQ(library.Find({"", 4})->sources.at(1).sha256.back(), 'c');
    EXPECT_THROW(library.Merge(m_scratch.Path() / "missing"), library::LibraryError);
}

TEST_F(RecordedLibrary, KeepsEachFileOnceAndAsLongAsARecordingHasIt) {
    const library::SharedFile own = library::PackFile("the message"), other = library::PackFile("another message"),
                              font = library::PackFile(std::string(9000, 'f'));
    EXPECT_LT(font->stream.size(), 100U);
    const auto recording = [&](int number, const library::SharedFile& message) {
        library::Recording result = Numbered(number);
        result.sources[0].sha256 = message->sha256;
        result.sources[1].sha256 = font->sha256;
        result.files = {message, font};
        return result;
    };
    const auto kept = [&] {
        library::Library library(m_file, Access::kRead);
        std::string found;
        for (const auto& [name, file] : {std::pair("own ", own), {"other ", other}, {"font", font}}) {
            const library::SharedFile read = library.KeptFile(file->sha256);
            if (read && ContentsOf(*read) == ContentsOf(*file)) found += name;
        }
        return found;
    };
    {
        library::Library library(m_file, Access::kWrite);
        library.Record(std::vector{recording(1, own), recording(2, other)});
        EXPECT_EQ(kept(), "own other font");
        EXPECT_TRUE(library.Origin({"", 1})->has_files);
        // A replacement that has the font, but not its contents.
        library::Recording bare = recording(2, other);
        bare.sources[0].sha256.clear();
        bare.files.clear();
        library.Record(std::vector{bare});
        EXPECT_EQ(kept(), "own font");
        EXPECT_TRUE(library.Remove({"", 1}));
        EXPECT_EQ(kept(), "font");
        EXPECT_TRUE(library.Remove({"", 2}));
        EXPECT_EQ(kept(), "");
        library.Record(std::vector{Numbered(3)});
        EXPECT_FALSE(library.Origin({"", 3})->has_files);
    }
    const std::filesystem::path shard = m_scratch.Path() / "shard";
    library::Library(shard, Access::kWrite).Record(std::vector{recording(1, own), recording(2, other)});
    library::Library library(m_file, Access::kWrite);
    library::Recording without = recording(2, other);
    without.files.clear();
    library.Record(std::vector{without});
    EXPECT_EQ(library.Merge(shard).unchanged, 1);
    EXPECT_EQ(kept(), "own other font");
}

TEST_F(RecordedLibrary, OfAnEarlierVersionIsReadAndGetsItsTablesWhenItIsWritten) {
    library::Library(m_file, Access::kWrite).Record(std::vector{Numbered(1)});
    const std::string first_version = "DROP INDEX source_sha256; DROP TABLE file; PRAGMA user_version = 1";
    Tamper(first_version);
    {
        library::Library library(m_file, Access::kRead);
        EXPECT_EQ(Dump(library.Find({"", 1}).value()), Dump(Numbered(1)));
        EXPECT_FALSE(library.Origin({"", 1})->has_files);
        EXPECT_EQ(library.KeptFile(std::string(64, 'a')), nullptr);
    }
    const library::SharedFile file = library::PackFile("message");
    library::Recording recording = Numbered(2);
    recording.sources = {{"/disk/MESSAGES/.2", {}, file->size, file->sha256}};
    recording.files = {file};
    // Opened before it is written by another program.
    library::Library reader(m_file, Access::kRead), writer(m_file, Access::kWrite);
    library::Library(m_file, Access::kWrite).Record(std::vector{recording});
    for (library::Library* library : {&reader, &writer}) EXPECT_NE(library->KeptFile(file->sha256), nullptr);
    EXPECT_TRUE(writer.Remove({"", 1}));
    EXPECT_EQ(Numbers(reader.List()), std::vector{2});
}

TEST_F(RecordedLibrary, RefusesAFileWithAnotherChecksum) {
    const library::SharedFile file = library::PackFile("message");
    library::Recording recording = Numbered(1);
    recording.sources = {{"/disk/MESSAGES/.1", {}, file->size, file->sha256}};
    recording.files = {file};
    for (const char* sql :
         {"UPDATE file SET size = 6", "UPDATE file SET size = 1 << 50", "UPDATE file SET stream = x'00'"}) {
        std::filesystem::remove(m_file);
        library::Library(m_file, Access::kWrite).Record(std::vector{recording});
        Tamper(sql);
        library::Library library(m_file, Access::kRead), target(m_scratch.Path() / "target", Access::kWrite);
        EXPECT_THROW(ContentsOf(*library.KeptFile(file->sha256)), std::runtime_error) << sql;
        EXPECT_THROW(target.Merge(m_file), library::LibraryError) << sql;
    }
}

struct Refusal {
    const char* name;
    const char* sql;
    const char* reason;
};

TEST_F(RecordedLibrary, RefusesDamagedAndForeignFiles) {
    const std::string unchecked = "PRAGMA ignore_check_constraints = 1; ";
    const Refusal cases[] = {
        {"newer", "PRAGMA user_version = 9", "the library has version 9, and this program reads the versions 1 to 2"},
        {"foreign", "PRAGMA application_id = 5", "another program's database"},
        {"trigger", "CREATE TRIGGER t AFTER INSERT ON font BEGIN DELETE FROM recording; END", "tables are not those"},
        {"column", "ALTER TABLE warning ADD COLUMN x TEXT", "tables are not those"},
        {"number", "UPDATE recording SET number = 70000", "number 70000"},
        {"kind", "UPDATE recording SET kind = 'x'", "unknown kind"},
        {"lines", "UPDATE recording SET lines = 500", "lines 500"},
        {"width", "UPDATE picture SET width = -1", "width -1"},
        {"edge", "UPDATE field SET \"left\" = 1 << 40", "field's edge"},
        {"font", "UPDATE source SET font_number = -7", "font number -7"},
        {"checksum", "UPDATE source SET sha256 = 'x'", "checksum"},
        {"null",
         "PRAGMA writable_schema = 1; UPDATE sqlite_schema SET sql = replace(sql, 'kind TEXT NOT NULL', 'kind TEXT')",
         "tables are not those"},
        {"search", "DELETE FROM search_data", "damaged"},
    };
    for (const Refusal& refusal : cases) {
        std::filesystem::remove(m_file);
        library::Library(m_file, Access::kWrite).Record(std::vector{Numbered(1)});
        Tamper(unchecked + refusal.sql);
        for (const Access access : {Access::kRead, Access::kWrite}) {
            EXPECT_THAT(Failure(access), AllOf(HasSubstr(m_file.string() + ": "), HasSubstr(refusal.reason)))
                << refusal.name;
        }
    }
}

TEST_F(RecordedLibrary, LeavesOtherFilesUntouched) {
    Tamper("PRAGMA journal_mode = WAL; CREATE TABLE t (x)");
    const std::string database = samples_test::ReadAll(m_file);
    for (const std::string& bytes : {database, std::string(), std::string("a letter"), std::string(5000, 'x')}) {
        samples::WriteWholeFile(m_file, std::string_view(bytes));
        EXPECT_THAT(Failure(Access::kWrite), HasSubstr("not a library of recorded messages"));
        EXPECT_EQ(samples_test::ReadAll(m_file), bytes);
    }
}

TEST_F(RecordedLibrary, ReportsWhyItCannotBeOpened) {
    EXPECT_THAT(Failure(Access::kRead), HasSubstr("lib #1?.zlib: the library can't be opened: No such file"));
    EXPECT_FALSE(std::filesystem::exists(m_file));
    m_file = m_scratch.Path() / "new" / "directory" / "lib";
    EXPECT_THAT(Failure(Access::kRead), HasSubstr("No such file"));
    EXPECT_FALSE(std::filesystem::exists(m_scratch.Path() / "new"));
    EXPECT_EQ(Failure(Access::kWrite), "");
    m_file = m_file / "beside" / "lib";
    EXPECT_THAT(Failure(Access::kWrite), HasSubstr("the directory of the library can't be made: Not a directory"));
    m_file = m_scratch.Path();
    EXPECT_THAT(Failure(Access::kWrite), HasSubstr("is a directory"));
}

TEST_F(RecordedLibrary, CanBeReadInAReadOnlyDirectory) {
    library::Library(m_file, Access::kWrite).Record(std::vector{Numbered(1)});
    std::filesystem::permissions(m_scratch.Path(), std::filesystem::perms{0555});
    const uid_t user = geteuid();
    ASSERT_TRUE(user != 0 || seteuid(65534) == 0);
    EXPECT_EQ(Failure(Access::kRead), "");
    EXPECT_THAT(Failure(Access::kWrite), HasSubstr("can't be"));
    ASSERT_EQ(seteuid(user), 0);
    std::filesystem::permissions(m_scratch.Path(), std::filesystem::perms{0700});
}

TEST_F(RecordedLibrary, WaitsForAnotherProgramAndReportsIt) {
    library::Library library(m_file, Access::kWrite);
    sqlite3* other = nullptr;
    sqlite3_open(m_file.c_str(), &other);
    sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    EXPECT_EQ(Failure(Access::kRead), "");
    EXPECT_THAT(Failure(Access::kWrite), HasSubstr("another program keeps the library locked"));
    sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
    EXPECT_EQ(Failure(Access::kWrite), "");
    sqlite3_close(other);
}

TEST_F(RecordedLibrary, IsUnchangedWhenTheDiskIsFull) {
    library::Library library(m_file, Access::kWrite);
    library.Record(std::vector{Numbered(1)});
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{300'000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    library::Recording large = Numbered(2);
    large.picture.assign(1 << 20, 'x');
    EXPECT_THROW(library.Record(std::vector{Numbered(1, "other"), large}), library::LibraryError);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(Dump(library.Find({"", 1}).value()), Dump(Numbered(1)));
    library.Record(std::vector{large});
    EXPECT_EQ(library.Picture({"", 2}), large.picture);
}

}  // namespace

}  // namespace zel::test
