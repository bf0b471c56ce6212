// Paths of 259 characters, the limit, work everywhere. Longer ones are refused with a message.
#include <cstring>

#include <gmock/gmock.h>

#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_export.h"
#include "module/dialog/browse.h"
#include "module/state/module_state.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::FontSet;
using module_test::MessageOf;
using module_test::ModuleTest;
using module_test::PlainFont;
using module_test::SolidGlyph;
using testing::ElementsAre;
using testing::HasSubstr;

class LongPaths : public ModuleTest {
  protected:
    LongPaths() {
        font = PlainFont("Long", "A");
        font.AddStored('S', SolidGlyph(5, 7), 0, 0);
        message = MessageOf({files::RowFromText(60, "SA", 0, 9)});
    }
    /// Creates a directory for which "<directory>\.0001" has `length` characters.
    std::string Directory(std::size_t length, char letter) {
        std::string path = "D:\\" + std::string(200, letter) + "\\";
        path += std::string(length - 6 - path.size(), letter);
        std::string native = path.substr(3);
        std::replace(native.begin(), native.end(), '\\', '/');
        std::filesystem::create_directories(Native(native));
        m_native[path] = native;
        return path;
    }
    void Put(const std::string& directory, const files::Bytes& bytes) {
        WriteFile(m_native.at(directory) + "/.0001", bytes);
    }
    void ImportFrom(const std::string& messages_dir, const std::string& fonts_dir) {
        CString path((messages_dir + "\\.0001").c_str()), font_dir(fonts_dir.c_str());
        CZelTransExport().ReadZelmaraMessage(&Host(), path, font_dir);
    }
    files::FontFile font;
    files::MessageFile message;

  private:
    std::map<std::string, std::string> m_native;
};

TEST_F(LongPaths, MessageFontAndStoredGlyphOf259) {
    const std::string messages_dir = Directory(259, 'm'), fonts_dir = Directory(259, 'f');
    Put(messages_dir, files::WriteMessage(message));
    Put(fonts_dir, files::WriteFont(font));
    ImportFrom(messages_dir, fonts_dir);
    EXPECT_EQ(Order(), "1212 1157 char*2 1181 1180 1213 15");
    ASSERT_EQ(chars.size(), 2U);
    EXPECT_EQ(chars[0].info.glyph_height, 7) << "read again from the file";
    ASSERT_NE(chars[0].info.font_copy, nullptr);
    EXPECT_EQ(std::strlen(chars[0].info.font_copy->file_name), 259U);
    std::vector<std::uint8_t> pixels(5 * 7 * 4);
    DIBSECTION dib{};
    dib.dsBm.bmBits = pixels.data();
    dib.dsBmih.biWidth = 5;
    dib.dsBmih.biHeight = 7;
    CZelFont().BuildMFData(reinterpret_cast<FontAddress>(chars[0].info.font_copy), &dib, 0, 'S', -1);
    EXPECT_EQ(pixels.back(), 255);
}

TEST_F(LongPaths, FontOf260IsNotFound) {
    const std::string fonts_dir = Directory(260, 'f');
    Put(fonts_dir, files::WriteFont(font));
    FontSet fonts;
    CString path(fonts_dir.c_str());
    EXPECT_EQ(fonts.ReadFont(path, 1, 0, false), 0);
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("Couldn't Find Zelmara! Font File: " + fonts_dir + "\\.0001\n")));
    EXPECT_EQ(path, (fonts_dir + "\\").c_str());
}

TEST_F(LongPaths, MessageOf260IsNotFound) {
    const std::string messages_dir = Directory(260, 'm');
    Put(messages_dir, files::WriteMessage(message));
    RunDialog([&](script::DialogDriver& user, CZelTransDlg& dialog) {
        user.Type(ImportControl::kMessageDirBox, messages_dir);
        user.Type(ImportControl::kMessageIdEdit, ".0001");
        user.Press(ImportControl::kReadButton);
        EXPECT_EQ(dialog.m_iStatus, 3);
    });
    EXPECT_THAT(Boxes(), testing::Contains(HasSubstr("Couldn't open Zelmara! Message File: " + messages_dir)));
}

TEST_F(LongPaths, LongerPathsAreReported) {
    for (const std::size_t length : {257U, 258U, 261U, 300U, 519U, 520U, 521U, 2600U}) {
        const std::string directory = "D:\\" + std::string(length, 'x');
        RunDialog([&](script::DialogDriver& user, CZelTransDlg& dialog) {
            dialog::BringToTop(dialog, ImportControl::kFontDirBox, directory.c_str());
            dialog.SetDlgItemText(ImportControl::kMessageIdEdit, std::string(length, '7').c_str());
            user.Press(ImportControl::kReadButton);
            EXPECT_EQ(dialog.m_iStatus, 1);
            user.Type(ImportControl::kFontDirBox, "D:\\MACHINE");
            user.Press(ImportControl::kReadButton);
            EXPECT_EQ(dialog.m_iStatus, 3);
        });
        FontSet fonts;
        std::string font_path = directory + "\\." + std::string(length, '9');
        EXPECT_FALSE(CZelTransExport().MakeTavroFont(font_path.data(), &fonts));
    }
}

TEST_F(LongPaths, NameListOf259IsRead) {
    const std::size_t name = std::strlen("typeface_list.txt");
    const std::string directory = Directory(259 - name + 6 - 1, 't');
    char map_dir[MAX_PATH] = {};
    std::strcpy(map_dir, (directory + "\\").c_str());
    WriteFile(directory.substr(3, 200) + "/" + directory.substr(204) + "/typeface_list.txt", "\n\nArial\tName BT\n");
    Register_GLV_OnChar(nullptr, map_dir);
    module_test::OpenDialog dialog(nullptr);
    EXPECT_TRUE(dialog.MapTypeFace());
    EXPECT_FALSE(dialog.MapBitStreamFont()) << "its path is longer";
    EXPECT_THAT(Boxes(), ElementsAre(HasSubstr("The filename or extension is too long.")));
}

TEST_F(LongPaths, BrowsedFontOf259IsRead) {
    const std::string fonts_dir = Directory(259, 'b');
    Put(fonts_dir, files::WriteFont(font));
    desktop.SetYesNoAnswer(IDYES);
    desktop.QueueFile(fonts_dir + "\\.0001");
    FontSet fonts;
    CString path("D:\\MACHINE");
    EXPECT_EQ(fonts.ReadFont(path, 77, 0, false), 1);
    EXPECT_EQ(std::strlen(fonts.m_Slots[0].file_name), 259U);
    EXPECT_EQ(path, fonts_dir.c_str());
}

}  // namespace

}  // namespace zel::test
