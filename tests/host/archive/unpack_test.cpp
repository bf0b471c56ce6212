#include <chrono>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/archive/archived_disks.h"
#include "host/archive/unpacked_archive.h"
#include "samples/scratch_directory.h"
#include "support/archive_writer.h"

namespace zel::test {

namespace {

namespace fs = std::filesystem;
using archive::UnpackedArchive;
using archive::UnpackLimits;
using archive::Wanted;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class Unpacking : public testing::Test {
  protected:
    Unpacking() {
        fs::create_directories(m_temporary);
        ::setenv("TMPDIR", m_temporary.c_str(), 1);
    }
    // Nothing is left, in the temporary directory or anywhere else.
    ~Unpacking() override {
        EXPECT_TRUE(fs::is_empty(m_temporary));
        EXPECT_THAT(samples_test::NamesIn(m_scratch.Path()), ElementsAre("box", "tmp"));
        ::unsetenv("TMPDIR");
    }

    UnpackedArchive Unpack(StoredAs form, const std::vector<StoredEntry>& entries, const UnpackLimits& limits = {}) {
        WriteArchive(m_box, form, entries);
        return UnpackedArchive(m_box, Wanted::kDisks, {}, limits);
    }

    /// The unpacked files, each as "path=contents", and empty folders.
    static std::vector<std::string> FilesOf(const UnpackedArchive& unpacked) {
        std::vector<std::string> files;
        for (const auto& entry : fs::recursive_directory_iterator(unpacked.Root())) {
            const std::string path = entry.path().lexically_relative(unpacked.Root()).string();
            if (entry.is_regular_file()) files.push_back(path + "=" + samples_test::ReadAll(entry.path()));
            if (entry.is_directory() && fs::is_empty(entry.path())) files.push_back(path + "/");
        }
        std::ranges::sort(files);
        return files;
    }

    /// Keeps the first bytes of the archive.
    void Cut(std::uintmax_t size) const { fs::resize_file(m_box, size); }

    samples_test::ScratchDirectory m_scratch;
    const fs::path m_temporary = m_scratch.Path() / "tmp";
    const fs::path m_box = m_scratch.Path() / "box";
};

constexpr StoredAs kForms[] = {{"zip"},           {"ustar"},
                               {"pax"},           {"gnutar"},
                               {"ustar", "gzip"}, {"ustar", "bzip2"},
                               {"pax", "xz"},     {"gnutar", "zstd"},
                               {"ustar", "lzma"}, {"ustar", "compress"},
                               {"iso9660"}};

TEST_F(Unpacking, GivesTheFilesOfDisksWithTheirTimesInEveryForm) {
    for (const StoredAs& form : kForms) {
        SCOPED_TRACE(std::string(form.format) + " " + form.filter);
        const UnpackedArchive unpacked =
            Unpack(form, {{"NEWS/", "", AE_IFDIR},
                          {"NEWS/README", "not part of a disk"},
                          {"NEWS/MESSAGES/", "", AE_IFDIR},
                          {"NEWS/MESSAGES/.0001", "one"},
                          {"NEWS/MESSAGES/.0002", std::string(100000, '2'), AE_IFREG, {}, 1234567890},
                          {"NEWS/MACHINE/", "", AE_IFDIR},
                          {"NEWS/MACHINE/.0012", "font"},
                          {"St\xC3\xB6rung/", "", AE_IFDIR},
                          {"St\xC3\xB6rung/MESSAGES/", "", AE_IFDIR}});
        EXPECT_EQ(unpacked.Failure(), "");
        EXPECT_THAT(unpacked.Refused(), IsEmpty());
        EXPECT_THAT(FilesOf(unpacked),
                    ElementsAre("NEWS/MACHINE/.0012=font", "NEWS/MESSAGES/.0001=one",
                                "NEWS/MESSAGES/.0002=" + std::string(100000, '2'), "St\xC3\xB6rung/MESSAGES/"));
        const auto modified = fs::last_write_time(unpacked.Root() / "NEWS/MESSAGES/.0002");
        EXPECT_EQ(std::chrono::file_clock::to_sys(modified).time_since_epoch(), std::chrono::seconds(1234567890));
        const auto disks = archive::DisksIn(unpacked.Root(), "x/Box.of.2001.TAR.gz");
        ASSERT_EQ(disks.size(), 2U);
        EXPECT_EQ(disks[0].name, "NEWS");
        EXPECT_EQ(disks[1].folder, "St\xC3\xB6rung");
    }
}

TEST_F(Unpacking, NamesADiskAtTheTopAfterTheArchive) {
    const UnpackedArchive unpacked = Unpack({"zip"}, {{"./messages/.0001", "1"}, {"a/b/MESSAGES/.0001", "2"}});
    for (const auto& [file, name] :
         {std::pair("x/Box.2001.zip", "Box.2001"), {"box.TAR.xz", "box"}, {"box.tgz", "box"}}) {
        const auto disks = archive::DisksIn(unpacked.Root(), file);
        ASSERT_EQ(disks.size(), 2U);
        EXPECT_EQ(disks[0].folder, "");
        EXPECT_EQ(disks[0].name, name);
        EXPECT_EQ(disks[1].folder, "a/b");
        EXPECT_EQ(disks[1].name, "b");
    }
}

struct HostileCase {
    StoredEntry entry;
    const char* refusal;
    StoredAs form{"gnutar"};
};

TEST_F(Unpacking, RefusesHostileEntriesAndKeepsTheOthers) {
    const HostileCase cases[] = {
        {{"../../MESSAGES/.0002", "x"}, "../../MESSAGES/.0002: its name leads out of the archive"},
        {{"../MESSAGES/.0002", "x"}, "../MESSAGES/.0002: its name leads out of the archive", {"zip"}},
        {{"D/MESSAGES/../../../x", "x"}, "D/MESSAGES/../../../x: its name leads out of the archive", {"pax"}},
        {{"/tmp/MESSAGES/.0002", "x"}, "/tmp/MESSAGES/.0002: its name is an absolute path"},
        {{"D/MESSAGES/.0002\n", "x"}, "D/MESSAGES/.0002\n: its name has a control character"},
        {{"D/MESSAGES/a\\.0002", "x"}, "D/MESSAGES/a\\.0002: its name has a backslash"},
        {{"D/MESSAGES/.0001", "x"}, "D/MESSAGES/.0001: the archive contains it twice"},
        {{"D/MESSAGES/.0001", "x"}, "D/MESSAGES/.0001: the archive contains it twice", {"zip"}},
        {{"D/MESSAGES/NEWS.0001", "x"},
         "D/MESSAGES/NEWS.0001: its name and that of D/MESSAGES/News.0001 differ only in case"},
        {{"d/MESSAGES/.0002", "x"}, "d/MESSAGES/.0002: its name and that of D differ only in case"},
        {{"D/Messages/", "", AE_IFDIR}, "D/Messages/: its name and that of D/MESSAGES differ only in case"},
        {{"D/MESSAGES/.0001/MACHINE/.0002", "x"},
         "D/MESSAGES/.0001/MACHINE/.0002: the archive contains it as a file and as a folder"},
        {{"D/MESSAGES/.0002", "", AE_IFLNK}, "D/MESSAGES/.0002: it is a symbolic link"},
        {{"D", "", AE_IFLNK}, "D: it is a symbolic link"},
        {{"D/MESSAGES/.0002", "", AE_IFREG, "D/MESSAGES/.0001"}, "D/MESSAGES/.0002: it is a hard link"},
        {{"D/MESSAGES/.0002", "", AE_IFCHR}, "D/MESSAGES/.0002: it is neither a file nor a folder"},
        {{"D/MESSAGES/.0002", "", AE_IFIFO}, "D/MESSAGES/.0002: it is neither a file nor a folder"},
        {{"D/MESSAGES/" + std::string(300, 'n'), "x"},
         nullptr},  // a name that the file system refuses, with its reason
    };
    for (const HostileCase& row : cases) {
        const UnpackedArchive unpacked = Unpack(
            row.form,
            {{"D/MESSAGES/.0001", "one"}, {"D/MESSAGES/News.0001", "news"}, row.entry, {"D/MESSAGES/.0003", "three"}});
        ASSERT_EQ(unpacked.Refused().size(), 1U) << row.entry.name;
        if (row.refusal != nullptr) {
            EXPECT_EQ(unpacked.Refused()[0], row.refusal);
        } else {
            EXPECT_THAT(unpacked.Refused()[0], HasSubstr(": can't be unpacked: File name too long"));
        }
        EXPECT_EQ(unpacked.Failure(), "");
        EXPECT_THAT(FilesOf(unpacked),
                    ElementsAre("D/MESSAGES/.0001=one", "D/MESSAGES/.0003=three", "D/MESSAGES/News.0001=news"));
    }
}

TEST_F(Unpacking, CountsAllRefusalsAndKeepsTheFirst) {
    const std::vector<StoredEntry> links(50, {"link", "", AE_IFLNK});
    const UnpackedArchive unpacked = Unpack({"ustar"}, links);
    EXPECT_EQ(unpacked.RefusedCount(), 50U);
    EXPECT_EQ(unpacked.Refused().size(), 20U);
}

struct BombCase {
    const char* name;
    StoredAs form;
    UnpackLimits limits;
    const char* refusal;
    const char* failure;
    std::string contents{};
    const char* entry = "MESSAGES/.0002";
};

TEST_F(Unpacking, SaysWhichLimitABombExceeds) {
    constexpr std::uint64_t kMiB = 1 << 20;
    constexpr char kLarge[] = "MESSAGES/.0002: it is larger than 1 MiB, which is the limit";
    constexpr char kRatio[] =
        ": the archive is read no further: unpacked, it is more than 10 times as large, which is the limit";
    const std::string zeros(4 * kMiB, '\0');
    const UnpackLimits file{.file = kMiB}, total{.total = 2 * kMiB}, ratio{.ratio = 10, .free_of_ratio = kMiB},
        entries{.entries = 1};
    const BombCase cases[] = {
        {"a large file in a zip", {"zip"}, file, kLarge, "", zeros},
        {"a large file in a tar", {"gnutar", "xz"}, file, kLarge, "", zeros},
        {"all files",
         {"zip"},
         total,
         "",
         "MESSAGES/.0002: the archive is read no further: it has more than 2 MiB, which is the limit",
         zeros},
        {"files that are passed over",
         {"ustar", "gzip"},
         total,
         "",
         "README: the archive is read no further: it has more than 2 MiB, which is the limit",
         zeros,
         "README"},
        {"the ratio of a zip", {"zip"}, ratio, "", "MESSAGES/.0002", zeros},
        {"the ratio of a tar", {"pax", "zstd"}, ratio, "", "README", zeros, "README"},
        {"entries",
         {"ustar"},
         entries,
         "",
         "MESSAGES/.0002: the archive is read no further: it has more than 1 entries, which is the limit",
         "x"},
    };
    for (const BombCase& row : cases) {
        SCOPED_TRACE(row.name);
        const UnpackedArchive unpacked =
            Unpack(row.form, {{"MESSAGES/.0001", "one"}, {row.entry, row.contents}}, row.limits);
        const bool by_ratio = row.limits.ratio == 10;
        EXPECT_EQ(unpacked.Failure(), std::string(row.failure) + (by_ratio ? kRatio : ""));
        EXPECT_EQ(unpacked.Refused(),
                  *row.refusal != '\0' ? std::vector<std::string>{row.refusal} : std::vector<std::string>());
        EXPECT_THAT(FilesOf(unpacked), ElementsAre("MESSAGES/.0001=one"));
    }
}

/// Contents that can't be compressed.
std::string Noise(unsigned seed, std::size_t size) {
    std::string bytes;
    while (bytes.size() < size) {
        seed = seed * 1664525 + 1013904223;
        bytes += static_cast<char>(seed >> 24);
    }
    return bytes;
}

TEST_F(Unpacking, GivesWhatPrecedesACutAtAnyByte) {
    std::vector<StoredEntry> entries;
    // A decompressor gives nothing of the block in which its input ends, for bzip2 of anything here.
    for (unsigned n = 0; n < 9; ++n) entries.push_back({"MESSAGES/.000" + std::to_string(n), Noise(n, 100000)});
    for (const StoredAs& form : kForms) {
        SCOPED_TRACE(std::string(form.format) + " " + form.filter);
        ASSERT_EQ(FilesOf(Unpack(form, entries)).size(), entries.size());
        const std::string whole = samples_test::ReadAll(m_box);
        std::size_t most = 0;
        for (std::size_t cut = whole.size() - 1400; cut > 1400; cut -= cut / 4) {
            std::ofstream(m_box) << whole.substr(0, cut);
            try {
                const UnpackedArchive unpacked(m_box, Wanted::kDisks);
                std::vector<std::string> files = FilesOf(unpacked);
                // A file that begins with zeros is a tar file without entries.
                EXPECT_TRUE(files.empty() || files.size() == entries.size() || !unpacked.Failure().empty() ||
                            unpacked.RefusedCount() > 0)
                    << cut;
                std::erase(files, "MESSAGES/");
                most = std::max(most, files.size());
                for (std::size_t n = 0; n < files.size(); ++n)
                    EXPECT_TRUE(files[n] == entries[n].name + "=" + entries[n].contents) << cut << ' ' << n;
            } catch (const std::runtime_error& error) {
                EXPECT_THAT(error.what(), HasSubstr("neither a directory nor an archive")) << cut;
            }
        }
        EXPECT_GE(most, std::string_view(form.filter) == "bzip2" ? 0U : 4U);
    }
}

TEST_F(Unpacking, NoticesACutBetweenEntries) {
    for (const StoredAs& form : {StoredAs{"ustar"}, StoredAs{"zip"}}) {
        WriteArchive(m_box, form, {{"MESSAGES/.0001", std::string(512, '1')}});
        const std::uintmax_t one = fs::file_size(m_box);
        WriteArchive(m_box, form, {{"MESSAGES/.0001", std::string(512, '1')}, {"MESSAGES/.0002", "2"}});
        // The second header of a tar file; the list at the end of a zip file.
        Cut(std::string_view(form.format) == "zip" ? one : 1024);
        const UnpackedArchive unpacked(m_box, Wanted::kDisks);
        EXPECT_THAT(unpacked.Failure(), HasSubstr("the archive is cut short or damaged: ")) << form.format;
        EXPECT_GE(FilesOf(unpacked).size(), 1U);
    }
}

TEST_F(Unpacking, RefusesANameWithANul) {
    WriteArchive(m_box, {"zip"}, {{"MESSAGES/.0001", "one"}, {"MESSAGES/.0002Xa", "two"}});
    std::string bytes = samples_test::ReadAll(m_box);
    for (std::size_t at; (at = bytes.find("2Xa")) != std::string::npos;) bytes[at + 1] = '\0';
    std::ofstream(m_box) << bytes;
    const UnpackedArchive unpacked(m_box, Wanted::kDisks);
    EXPECT_THAT(unpacked.Refused(),
                ElementsAre(std::string("MESSAGES/.0002\0a: its name has a control character", 50)));
    EXPECT_THAT(FilesOf(unpacked), ElementsAre("MESSAGES/.0001=one"));
}

TEST_F(Unpacking, LeavesOutAnEntryWithABadChecksum) {
    WriteArchive(m_box, {"zip"}, {{"MESSAGES/.0001", "abcdefgh"}, {"MESSAGES/.0002", "two"}});
    std::string bytes = samples_test::ReadAll(m_box);
    // A stored or deflated text is found by its name.
    bytes[bytes.find("MESSAGES/.0001") + 40] ^= 1;
    std::ofstream(m_box) << bytes;
    const UnpackedArchive unpacked(m_box, Wanted::kDisks);
    EXPECT_GE(unpacked.RefusedCount() + (unpacked.Failure().empty() ? 0 : 1), 1U);
    for (const std::string& file : FilesOf(unpacked)) EXPECT_EQ(file, "MESSAGES/.0002=two");
}

TEST_F(Unpacking, RefusesWhatIsNoArchive) {
    for (const std::string& text : {std::string("text"), std::string(5000, 'x'), std::string()}) {
        std::ofstream(m_box) << text;
        EXPECT_THROW(UnpackedArchive(m_box, Wanted::kDisks), std::runtime_error) << text.size();
    }
}

TEST_F(Unpacking, StopsWhenAsked) {
    WriteArchive(m_box, {"ustar"}, {{"MESSAGES/.0001", "one"}, {"MESSAGES/.0002", "two"}});
    int polls = 0;
    const UnpackedArchive unpacked(m_box, Wanted::kDisks, [&] { return ++polls > 2; });
    EXPECT_TRUE(unpacked.WasStopped());
    EXPECT_LT(FilesOf(unpacked).size(), 2U);
}

}  // namespace

}  // namespace zel::test
