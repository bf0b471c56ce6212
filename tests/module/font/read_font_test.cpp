// Finding a font file, and the message boxes for one that can't be read.
#include <cstring>

#include <gmock/gmock.h>

#include "platform/system/registry.h"
#include "samples/write_file.h"
#include "support/file_error.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using files::FontFile;
using module_test::ExpectFileError;
using module_test::FontSet;
using module_test::Joined;
using module_test::ModuleTest;
using module_test::PlainFont;
using testing::ElementsAre;
using testing::IsEmpty;

class ReadFont : public ModuleTest {
  protected:
    void Store(const std::string& directory) {
        const std::string key = "Software\\Kovesh\\Tavro\\ZelTrans\\FontDir";
        settings.CreateKey(key);
        settings.SetValue(key, "FontDir 0", {REG_SZ, {directory.c_str(), directory.c_str() + directory.size() + 1}});
    }
    void WriteAt(const std::string& name) { WriteFile(name, files::WriteFont(PlainFont())); }
    int Read(const char* directory = "D:\\MACHINE", int number = 12) {
        path = directory;
        return fonts.ReadFont(path, number, 3, false);
    }

    FontSet fonts;
    CString path;
};

constexpr const char* kCandidates[] = {"MACHINE/.0012", "MACHINE/.12", "STORED/.0012", "STORED/.12", "BROWSED/.0012"};

TEST_F(ReadFont, TriesFiveNamesAndStopsAtTheFirst) {
    Store("D:\\STORED");
    CZelFont::m_SFontBrowseDir = "D:\\BROWSED";
    for (const char* name : kCandidates) WriteAt(name);
    for (std::string name : kCandidates) {
        EXPECT_EQ(Read(), 1);
        EXPECT_EQ(path, "D:\\MACHINE\\");
        std::filesystem::remove(Native(name));
        name.replace(name.find('/'), 1, "\\");
        const tag_font_memory& slot = fonts.m_Slots[3];
        EXPECT_STREQ(slot.file_name, ("D:\\" + name).c_str());
        EXPECT_EQ(std::memcmp(slot.font_copy, &slot, sizeof slot), 0) << "shared by its copy";
        fonts.Clear();
    }
    WriteAt("BROWSED/.12");
    EXPECT_EQ(Read(), 0) << "in the browse directory, only the long name is tried";
    EXPECT_EQ(CZelFont::m_SFontBrowseDir, "D:\\BROWSED");
    EXPECT_THAT(NewBoxes(), ElementsAre("Couldn't Find Font File |Couldn't Find Zelmara! Font File: "
                                        "D:\\MACHINE\\.0012\nWould you like to browse for this file?"));
}

TEST_F(ReadFont, StoredDirectoryTooLongForAPathIsIgnored) {
    Store("D:\\" + std::string(258, 's'));
    CZelFont::m_bIgnoreErrors = 1;
    EXPECT_EQ(Read(), 0);
}

TEST_F(ReadFont, PathIsReturnedWithABackslash) {
    WriteAt("MACHINE/.65534");
    for (const std::string directory : {"D:\\MACHINE", "D:\\MACHINE\\", "D:/MACHINE"}) {
        const std::string with_backslash = directory + (directory.ends_with('\\') ? "" : "\\");
        EXPECT_EQ(Read(directory.c_str(), 65534), 1);
        EXPECT_STREQ(fonts.m_Slots[3].file_name, (with_backslash + ".65534").c_str());
        EXPECT_EQ(path, with_backslash.c_str());
        fonts.Clear();
    }
    EXPECT_EQ(Read("", 12), 0);
    EXPECT_EQ(path, "") << "an empty directory means the current one";
    EXPECT_THAT(NewBoxes(), ElementsAre(testing::HasSubstr("Font File: .0012\n")));
    EXPECT_EQ(Read("D:\\MACHINE", -1), 0);
    EXPECT_EQ(path, "D:\\MACHINE") << "no number, no search";
    EXPECT_THAT(NewBoxes(), IsEmpty());
}

TEST_F(ReadFont, NoAtThePromptLeavesTheSlotUnchanged) {
    desktop.QueueBoxAnswer(IDNO);
    EXPECT_EQ(Read(), 0);
    EXPECT_EQ(path, "D:\\MACHINE\\");
    EXPECT_EQ(desktop.Boxes()[0].style, 0x40033U);
    EXPECT_EQ(desktop.Boxes()[0].owner, nullptr);
    EXPECT_FALSE(CZelFont::m_bCancelFontBrowse);
    EXPECT_EQ(fonts.m_Slots[3].font_header, nullptr);
}

TEST_F(ReadFont, CancelSilencesThePromptUntilItIsAllowedAgain) {
    desktop.QueueBoxAnswer(IDCANCEL);
    EXPECT_EQ(Read(), -1);
    EXPECT_TRUE(CZelFont::m_bCancelFontBrowse);
    EXPECT_EQ(Read(), 0);
    EXPECT_EQ(desktop.Boxes().size(), 1U);
    CZelFont::m_bCancelFontBrowse = false;
    EXPECT_EQ(Read(), 0);
    EXPECT_EQ(desktop.Boxes().size(), 2U);
}

TEST_F(ReadFont, YesBrowsesAndKeepsTheDirectory) {
    WriteAt("ELSEWHERE/MY.FONT");
    WriteAt("ELSEWHERE/.0013");
    desktop.SetYesNoAnswer(IDYES);
    desktop.QueueFile(Native("ELSEWHERE/MY.FONT").string());
    EXPECT_EQ(Read(), 1);
    EXPECT_STREQ(fonts.m_Slots[3].file_name, "D:\\ELSEWHERE\\MY.FONT");
    EXPECT_EQ(path, "D:\\ELSEWHERE");
    EXPECT_EQ(CZelFont::m_SFontBrowseDir, "D:\\ELSEWHERE");
    const script::HeadlessDesktop::FileDialog& files = desktop.FileDialogs()[0];
    EXPECT_EQ(files.title, "Browse for Font File");
    EXPECT_EQ(files.initial_dir, "\\MACHINE\\");
    EXPECT_EQ(files.initial_name, ".0012");
    EXPECT_EQ(files.filter, ".*");
    FontSet set;
    path = "D:\\MACHINE";
    EXPECT_EQ(set.ReadFont(path, 13, 0, false), 1) << "found where the user browsed before";
}

TEST_F(ReadFont, BrowsingWithoutAFileLoadsNothing) {
    desktop.SetYesNoAnswer(IDYES);
    for (const auto& file : {std::optional<std::string>(), std::optional<std::string>("D:\\NOWHERE\\.0012")}) {
        desktop.QueueFile(file);
        EXPECT_EQ(Read(), 0);
        EXPECT_EQ(path, "D:\\MACHINE\\");
        EXPECT_TRUE(CZelFont::m_SFontBrowseDir.IsEmpty());
    }
}

enum class Shown { kUnlessSkipped, kAlways };
struct FailureCase {
    const char* name;
    void (*change)(FontFile&);
    std::size_t cut;  // size of the truncated file in bytes, 0 for the whole file
    std::string boxes;
    Shown shown = Shown::kAlways;
    bool released = true;
    int result = 0;
};

std::string Couldnt(const char* what) {
    return "Couldn't Read the Zelmara! Font File|Couldn't Read Zelmara! Font File's " + std::string(what) +
           ": D:\\MACHINE\\.0012";
}
std::string FileError(const char* name) {
    return "Tavro|An unknown error occurred while accessing " + std::string(name) + ".";
}
const std::string kTessor = "ZELMARA Import|Tessor Encoded Data!";

TEST_F(ReadFont, ShowsABoxForEachFailure) {
    const auto leading = [](FontFile& f) {
        f.header.font_flags = 18;
        f.first_sample = files::SampleBlock{};
        f.sample = files::SampleBlock{};
    };
    const std::string directory = FileError("D:\\MACHINE\\"), file = FileError("D:\\MACHINE\\.0012");
    const std::size_t after_codes = 2184 + PlainFont().encoding.size();
    const auto unchanged = [](FontFile&) {};
    const FailureCase kCases[] = {
        {"short Psos header", unchanged, 135, Couldnt("Psos File Header"), Shown::kUnlessSkipped, false},
        {"wrong type", [](FontFile& f) { f.psos.file_type = 702; }, 0,
         "Not an Zelmara Font File Type |Not an Zelmara! Font File: D:\\MACHINE\\.0012", Shown::kUnlessSkipped, false},
        {"short font header", unchanged, 263, Couldnt("Font Header"), Shown::kUnlessSkipped, false},
        {"short directory", unchanged, 2183, Couldnt("Character Directory"), Shown::kAlways, false},
        {"short codes", unchanged, 2185, Couldnt("Encoding Data"), Shown::kAlways, false},
        {"short auxiliary block", [](FontFile& f) { f.header.aux_block_size = 9; }, 0, file},
        {"short leading codes", leading, 2185, directory},
        {"short leading sample", leading, after_codes + 9, directory},
        {"short second sample", leading, after_codes + 19, kTessor + file},
        {"short sample row", [](FontFile& f) { f.sample.emplace().a.height = 1; }, 0, FileError("Zelmara Font File")},
        {"negative block", [](FontFile& f) { f.header.aux_block_size = -2; }, 0, ""},
        {"not plain", [](FontFile& f) { f.header.font_flags = 0; }, 0, kTessor, Shown::kAlways, false, 1},
        {"missing record", [](FontFile& f) { f.directory[0].glyph_kind = 170; }, 0, file},
    };
    for (const FailureCase& row : kCases) {
        SCOPED_TRACE(row.name);
        FontFile font = PlainFont();
        row.change(font);
        files::Bytes bytes = files::WriteFont(font);
        if (row.cut != 0) bytes.resize(row.cut);
        WriteFile("MACHINE/.0012", bytes);
        for (const int skip : {0, 1}) {
            CZelFont::m_bIgnoreErrors = skip;
            FontSet set;
            path = "D:\\MACHINE";
            EXPECT_EQ(set.ReadFont(path, 12, 3, false), row.result);
            EXPECT_EQ(Joined(NewBoxes()), skip != 0 && row.shown == Shown::kUnlessSkipped ? "" : row.boxes);
            EXPECT_EQ(set.m_Slots[3].font_copy != nullptr, row.result == 1);
            if (row.released) {
                EXPECT_EQ(set.m_Slots[3].psos_header, nullptr);
            }
        }
    }
    for (const script::HeadlessDesktop::Box& box : desktop.Boxes())
        EXPECT_EQ(box.style, box.caption == "ZELMARA Import" ? 0U : 48U) << box.text;
}

TEST_F(ReadFont, WriteSampleDataReadsFromTheFilesPosition) {
    WriteFile("SAMPLES", "xABCDEFGH");
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(Native("SAMPLES").c_str(), "rb"),
                                                               &std::fclose);
    std::fgetc(file.get());
    tag_graphic_rectangle a, b;
    fonts.write_sample_data(file.get(), &a, &b, {0, 2, 3, 1, 2});
    EXPECT_EQ(std::string(a.data, a.data + 6), "ABCDEF");
    EXPECT_EQ(std::string(b.data, b.data + 2), "GH");
    EXPECT_EQ(a.width * 10 + a.height, 23);
    EXPECT_EQ(std::ftell(file.get()), 9);
    std::free(a.data);
    std::free(b.data);
    std::rewind(file.get());
    a.data = b.data = nullptr;
    ExpectFileError("Zelmara Font File", [&] {
        fonts.write_sample_data(file.get(), &a, &b, {0, 4, 2, 2, 1});  // the last row lacks a byte
    });
    std::free(a.data);
    EXPECT_THROW(fonts.write_sample_data(file.get(), &a, &b, {0, 4, -2, 0, 0}), CMemoryException*);
}

}  // namespace

}  // namespace zel::test
