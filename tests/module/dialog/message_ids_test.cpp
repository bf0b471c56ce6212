// Message ids: the file that an id names, and the next id. The check of the directories.
#include <cstring>

#include <gmock/gmock.h>

#include "module/contract/dialog_ids.h"
#include "platform/system/drives.h"
#include "platform/system/errors.h"
#include "platform/system/files.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::ModuleTest;
using module_test::OpenDialog;
using testing::ElementsAre;
using testing::IsEmpty;

struct IdCase {
    const char* name;
    const char* id;
    std::vector<const char*> files;
    bool found;
    /// What the import opens, or the name in the message box.
    const char* file_name;
};

class MessageId : public ModuleTest, public testing::WithParamInterface<IdCase> {};

TEST_P(MessageId, NamesAFile) {
    for (const char* file : GetParam().files) WriteFile("MESSAGES/" + std::string(file), "x");
    RunDialog([](script::DialogDriver& user, CZelTransDlg& dialog) {
        user.Type(ImportControl::kMessageIdEdit, GetParam().id);
        dialog.m_iStatus = 0;
        dialog.ReadDirectoryPaths();
        EXPECT_EQ(dialog.m_iStatus, GetParam().found ? 0 : 3);
        EXPECT_EQ(dialog.m_sMessageID, GetParam().found ? GetParam().file_name : "");
        EXPECT_EQ(user.Text(ImportControl::kMessageIdEdit), GetParam().found ? GetParam().file_name : GetParam().id);
        EXPECT_EQ(dialog.m_sFontDir, GetParam().found ? "D:\\MACHINE" : "");
        EXPECT_EQ(dialog.m_sMessageDir, GetParam().found ? "D:\\MESSAGES" : "");
        const LRESULT selection = dialog.GetDlgItem(ImportControl::kMessageIdEdit)->SendMessage(EM_GETSEL);
        if (!GetParam().found) {
            EXPECT_EQ(static_cast<std::size_t>(selection >> 16), std::strlen(GetParam().id))
                << "the whole text is selected";
        }
    });
    std::vector<std::string> boxes = Boxes();
    std::erase_if(boxes, [](const std::string& box) { return box.find("Mapping File") != std::string::npos; });
    if (GetParam().found) {
        EXPECT_THAT(boxes, IsEmpty());
    } else {
        EXPECT_THAT(boxes, ElementsAre("Zelmara! Import Error|Couldn't open Zelmara! Message File: D:\\MESSAGES\\" +
                                       std::string(GetParam().file_name) +
                                       "\n           The system cannot find the file specified.\r\n"));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Each, MessageId,
    testing::Values(IdCase{"number_finds_the_normal_form", "12", {".0012"}, true, ".0012"},
                    IdCase{"number_finds_itself_first", "12", {"12", ".0012", "0012"}, true, "12"},
                    IdCase{"number_finds_four_digits_last", "12", {"0012"}, true, "0012"},
                    IdCase{"normal_form", ".0012", {".0012"}, true, ".0012"},
                    IdCase{"four_digits_stay", "0012", {"0012", ".0012"}, true, "0012"},
                    IdCase{"long_number", "123456", {".00123456"}, true, ".00123456"},
                    IdCase{"long_number_of_five", "12345", {".00012345"}, true, ".00012345"},
                    IdCase{"tn_number", "12.TN", {".0012.TN"}, true, ".0012.TN"},
                    IdCase{"tn_number_itself", "12.TN", {"12.TN"}, true, "12.TN"},
                    IdCase{"tn_number_without_its_tn", "12.TN", {"0012"}, true, "0012"},
                    IdCase{"tn_in_the_middle_is_a_name", "12.TNx", {".0012.TN"}, false, "12.TNx"},
                    IdCase{"small_tn_is_a_name", "12.tn", {"x"}, false, "12.tn"},
                    IdCase{"name", "PROMO", {"PROMO"}, true, "PROMO"},
                    IdCase{"name_missing", "PROMO", {}, false, "PROMO"},
                    IdCase{"number_missing", "7", {}, false, ".0007"},
                    IdCase{"long_number_missing", "1234567", {}, false, ".01234567"},
                    IdCase{"tn_missing", "1.TN", {}, false, ".0001.TN"},
                    IdCase{"empty_id_is_number_0", "", {".0000"}, true, ".0000"},
                    IdCase{"empty_id_missing", "", {}, false, ".0000"},
                    IdCase{"dot_finds_the_file_without_it", ".0013", {"0013"}, true, "0013"},
                    IdCase{"dot_stays_when_both_are_there", ".0013", {"0013", ".0013"}, true, ".0013"},
                    IdCase{"dotted_name_finds_the_name_without", ".PROMO", {"PROMO"}, true, "PROMO"}),
    [](const auto& row) { return std::string(row.param.name); });

class Paths : public ModuleTest {};

TEST_F(Paths, NextIdIsTheNextOfFourDigits) {
    OpenDialog dialog(nullptr);
    for (const auto& [id, next] : {std::pair(".0012", ".0013"),
                                   {"0012", ".0013"},
                                   {"7", ".0008"},
                                   {"", ".0001"},
                                   {".", ".0001"},
                                   {".9999", ".0000"},
                                   {"9998", ".9999"},
                                   {"12345", "12345"},
                                   {".00123456", ".00123456"},
                                   {".0012.TN", ".0012.TN"},
                                   {"PROMO", "PROMO"},
                                   {"..12", "..12"},
                                   {"-1", "-1"}}) {
        dialog.m_sMessageID = id;
        dialog.IncrementFileName(id);
        EXPECT_EQ(dialog.m_sMessageID, next) << id;
        EXPECT_EQ(OpenDialog::M_sNextMessage, next) << id;
    }
}

struct DirectoryCase {
    const char* name;
    const char *font_dir, *message_dir;
    int status;
    /// Null for none.
    const char* box;
};

constexpr char kIllegalMedia[] =
    "Illegal Media Detected|Use 'Copy Zelmara! files' to copy messages from Zelmara! formatted media to \n Windows "
    "formatted media before attempting to import Zelmara! messages";

TEST_F(Paths, DirectoriesAreReportedAlsoIfWarningsAreSkipped) {
    WriteFile("MESSAGES/.0001", "x");
    WriteFile("PLAIN", "x");
    system::MountUnreadableDrive('Z', ERROR_NOT_DOS_DISK);
    system::MountUnreadableDrive('Y', ERROR_NOT_READY);
    const DirectoryCase kCases[] = {
        {"both there", "D:\\MACHINE", "D:\\MESSAGES", 0, nullptr},
        {"font directory missing", "D:\\NONE", "D:\\NONE", 1, "Invalid Directory|Invalid Font Directory: D:\\NONE"},
        {"no font directory", "", "D:\\MESSAGES", 1, "Invalid Directory|Invalid Font Directory: "},
        {"font directory on a foreign disk", "Z:\\F", "D:\\MESSAGES", 1, kIllegalMedia},
        {"font directory without a disk", "Y:\\F", "D:\\MESSAGES", 1,
         "Invalid Directory|Invalid Font Directory: Y:\\F"},
        {"message directory missing", "D:\\MACHINE", "D:\\NONE", 2, "Invalid Path|Invalid Message Path: D:\\NONE"},
        {"message directory on a foreign disk", "D:\\MACHINE", "Z:\\M", 2, kIllegalMedia},
        {"a plain file passes for a directory", "D:\\PLAIN", "D:\\MESSAGES", 0, nullptr},
        {"until a message is looked for in it", "D:\\MACHINE", "D:\\PLAIN", 3, nullptr},
    };
    RunDialog([&](script::DialogDriver& user, CZelTransDlg& dialog) {
        for (const DirectoryCase& row : kCases) {
            CZelFont::m_bIgnoreErrors = 1;
            NewBoxes();
            user.Type(ImportControl::kFontDirBox, row.font_dir);
            user.Type(ImportControl::kMessageDirBox, row.message_dir);
            user.Type(ImportControl::kMessageIdEdit, "1");
            dialog.m_iStatus = 0;
            dialog.ReadDirectoryPaths();
            EXPECT_EQ(dialog.m_iStatus, row.status) << row.name;
            EXPECT_EQ(NewBoxes(), row.box != nullptr ? std::vector<std::string>{row.box} : std::vector<std::string>());
            if (row.box != nullptr) {
                EXPECT_EQ(desktop.Boxes().back().owner, dialog.m_hWnd);
                EXPECT_EQ(desktop.Boxes().back().style, 48U);
            }
        }
        EXPECT_THAT(user.List(ImportControl::kFontDirBox), ElementsAre("D:\\MACHINE", "D:\\PLAIN"))
            << "the newest first, without duplicates";
    });
    system::MountDrive('Z', "");
    system::MountDrive('Y', "");
}

TEST_F(Paths, ReportErrorAddsTheSystemText) {
    OpenDialog dialog(nullptr);
    CString text("Something failed");
    SetLastError(5);
    EXPECT_EQ(dialog.ReportError(text), 5);
    SetLastError(0);
    EXPECT_EQ(dialog.ReportError(text), 0);
    SetLastError(0xABCDEF);
    EXPECT_EQ(dialog.ReportError(text), 0xABCDEF);
    EXPECT_THAT(Boxes(),
                ElementsAre("Zelmara! Import Error|Something failed\n           Access is denied.\r\n",
                            "Zelmara! Import Error|Something failed", "Zelmara! Import Error|Something failed"));
    EXPECT_EQ(desktop.Boxes()[0].style, 48U);
    EXPECT_EQ(desktop.Boxes()[1].style, 0U);
}

}  // namespace

}  // namespace zel::test
