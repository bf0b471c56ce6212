#include "platform/system/files.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/framework/cfile.h"
#include "platform/system/c_runtime.h"
#include "platform/system/drives.h"
#include "platform/system/errors.h"

namespace zel::test {

namespace {

namespace fs = std::filesystem;

/// A directory with DISK/MESSAGES/.0012, DISK/MESSAGES/Promo a FIFO and a socket, mounted as drive D.
class Files : public testing::Test {
  protected:
    void SetUp() override {
        m_root = fs::temp_directory_path() / ("zel_files_" + std::to_string(::getpid()));
        fs::create_directories(m_root / "DISK/MESSAGES");
        Write("DISK/MESSAGES/.0012", "message twelve");
        Write("DISK/MESSAGES/Promo", "promo");
        ::mkfifo((m_root / "DISK/pipe").c_str(), 0600);
        ::mknod((m_root / "DISK/socket").c_str(), S_IFSOCK | 0600, 0);
        system::MountDrive('D', (m_root / "DISK").string() + "/");
    }
    void TearDown() override {
        system::MountDrive('D', "");
        system::MountDrive('A', "");
        fs::remove_all(m_root);
    }

    void Write(const std::string& name, const std::string& bytes) {
        std::ofstream(m_root / name, std::ios::binary) << bytes;
    }
    /// Path below the root in the module's form.
    std::string Module(const std::string& name) { return system::ModulePath((m_root / "").string()) + name; }

    static std::string Content(const std::string& path) {
        CFile file;
        if (!file.Open(path.c_str(), CFile::modeRead)) return "error " + std::to_string(GetLastError());
        std::string content(static_cast<std::size_t>(file.GetLength()), '\0');
        content.resize(file.Read(content.data(), static_cast<UINT>(content.size())));
        return content;
    }
    static std::string Attributes(const std::string& path) {
        const DWORD attributes = GetFileAttributesA(path.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES) return "error " + std::to_string(GetLastError());
        return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? "directory" : "file";
    }

    fs::path m_root;
};

TEST_F(Files, OpenWithEitherSeparatorAnyCaseAndADriveLetter) {
    for (const char* path : {"D:\\MESSAGES\\Promo", "D:/MESSAGES/Promo", "d:\\messages\\PROMO", "D:MESSAGES\\promo",
                             "D:\\\\MESSAGES\\.\\Promo"}) {
        EXPECT_EQ(Content(path), "promo") << path;
    }
    system::MountDrive('D', "");
    EXPECT_EQ(Content(Module("DISK\\Messages\\.0012")), "message twelve");
}

TEST_F(Files, PreferTheNameAsWritten) {
    Write("DISK/MESSAGES/PROMO", "capitals");
    EXPECT_EQ(Content("D:\\MESSAGES\\Promo"), "promo");
    EXPECT_EQ(Content("D:\\MESSAGES\\PROMO"), "capitals");
    EXPECT_EQ(Content("D:\\MESSAGES\\promo"), "capitals") << "the first in byte order";
}

TEST_F(Files, ReportWhyTheyDoNotOpen) {
    EXPECT_EQ(Content("D:\\MESSAGES\\.0013"), "error 2");
    EXPECT_EQ(Content("D:\\MESSAGES\\Missing"), "error 2");
    EXPECT_EQ(Content("D:\\NOWHERE\\.0012"), "error 3");
    EXPECT_EQ(Content("D:\\MESSAGES\\.0012\\x"), "error 2");
    EXPECT_EQ(Content("D:\\MESSAGES"), "error 5");
    EXPECT_EQ(Content("D:\\pipe"), "error 5");
    EXPECT_EQ(Content("D:\\socket"), "error 5");
    EXPECT_EQ(Content("Q:\\MESSAGES\\.0012"), "error 3");
    EXPECT_EQ(Content(""), "error 3");
    EXPECT_EQ(Content("D:\\" + std::string(257, 'x')), "error 206");
}

TEST_F(Files, HaveAttributes) {
    EXPECT_EQ(Attributes("D:\\messages"), "directory");
    EXPECT_EQ(Attributes("D:\\MESSAGES\\"), "directory");
    EXPECT_EQ(Attributes("D:"), "directory");
    EXPECT_EQ(Attributes("D:\\MESSAGES\\.0012"), "file");
    EXPECT_EQ(Attributes("D:\\MESSAGES\\.0013"), "error 2");
    EXPECT_EQ(Attributes("D:\\NOWHERE\\.0013"), "error 3");
    EXPECT_EQ(Attributes("Q:\\"), "error 3");
    EXPECT_EQ(Attributes(std::string(300, 'x')), "error 3");
    EXPECT_EQ(Attributes("D:\\" + std::string(256, 'x')), "error 3") << "a component too long for this system";
    EXPECT_EQ(Attributes(""), "error 3");
}

TEST_F(Files, OfAnUnreadableDriveFailWithItsError) {
    system::MountUnreadableDrive('A', ERROR_NOT_DOS_DISK);
    EXPECT_EQ(Attributes("a:\\MESSAGES"), "error 26");
    EXPECT_EQ(Content("A:\\MESSAGES\\.0012"), "error 26");
}

TEST_F(Files, ConvertTheirPathsBetweenBothForms) {
    const std::string promo = (m_root / "DISK/MESSAGES/Promo").string();
    EXPECT_EQ(system::NativePath("D:\\messages\\promo"), promo);
    EXPECT_EQ(system::NativePath("D:\\messages\\other"), (m_root / "DISK/MESSAGES/other").string());
    EXPECT_EQ(system::NativePath("Q:\\x"), "Q:/x");
    EXPECT_EQ(system::ModulePath(promo), "D:\\MESSAGES\\Promo");
    EXPECT_EQ(system::ModulePath((m_root / "DISKS").string()), Module("DISKS"));
    EXPECT_EQ(system::ModulePath("/tmp/d/.0012"), "\\tmp\\d\\.0012");
    EXPECT_EQ(system::ModulePath("D:\\x"), "D:\\x");
}

TEST_F(Files, AreReadByCFileFromAnyPosition) {
    CFile file;
    char bytes[32] = {};
    ASSERT_TRUE(file.Open("D:\\messages\\.0012", CFile::modeRead | CFile::typeBinary | CFile::shareDenyNone));
    EXPECT_EQ(file.GetLength(), 14u);
    EXPECT_EQ(file.Seek(8, CFile::begin), 8u);
    EXPECT_EQ(file.Read(bytes, 32), 6u);
    EXPECT_STREQ(bytes, "twelve");
    EXPECT_EQ(file.GetPosition(), 14u);
    EXPECT_EQ(file.Read(bytes, 1), 0u);
    EXPECT_THROW(
        try { file.Seek(-15, CFile::end); } catch (CFileException* e) {
            EXPECT_EQ(e->m_cause, CFileException::badSeek);
            e->Delete();
            throw;
        },
        CFileException*);
    file.Close();
    EXPECT_EQ(file.Read(bytes, 1), 0u);
}

TEST_F(Files, ReportTheCauseToCFile) {
    CFile file;
    CFileException error;
    EXPECT_FALSE(file.Open("D:\\MESSAGES", CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::accessDenied);
    EXPECT_FALSE(file.Open("D:\\NOWHERE\\x", CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::badPath);
    EXPECT_EQ(error.m_lOsError, 3);
    EXPECT_STREQ(error.m_strFileName, "D:\\NOWHERE\\x");
    EXPECT_FALSE(file.Open("D:\\MESSAGES\\.0012", 0x1000 /* create */, &error));
}

struct SplitCase {
    const char* name;
    const char* path;
    const char *drive, *dir, *fname, *ext;
};
void PrintTo(const SplitCase& row, std::ostream* out) {
    *out << row.name;
}
class PathSplit : public testing::TestWithParam<SplitCase> {};
TEST_P(PathSplit, GivesTheParts) {
    char drive[3], dir[256], fname[256], ext[256];
    crt::_splitpath(GetParam().path, drive, dir, fname, ext);
    EXPECT_STREQ(drive, GetParam().drive);
    EXPECT_STREQ(dir, GetParam().dir);
    EXPECT_STREQ(fname, GetParam().fname);
    EXPECT_STREQ(ext, GetParam().ext);
    crt::_splitpath(GetParam().path, nullptr, nullptr, nullptr, nullptr);
}
const std::string g_long(300, 'e');
const std::string g_longPath = "x." + g_long;
const std::string g_longExtension = "." + g_long.substr(0, 254);
INSTANTIATE_TEST_SUITE_P(Each, PathSplit,
                         testing::Values(SplitCase{"font_file", "D:\\f\\.0012", "D:", "\\f\\", "", ".0012"},
                                         SplitCase{"directory", "D:\\f.x\\", "D:", "\\f.x\\", "", ""},
                                         SplitCase{"slashes", "/a/b.c/d", "", "/a/b.c/", "d", ""},
                                         SplitCase{"last_dot_counts", "12.3.TN", "", "", "12.3", ".TN"},
                                         SplitCase{"empty", "", "", "", "", ""},
                                         SplitCase{"long", g_longPath.c_str(), "", "", "x", g_longExtension.c_str()}),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace

}  // namespace zel::test
