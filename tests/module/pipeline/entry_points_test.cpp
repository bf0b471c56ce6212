// The members of CZelTransExport, the free functions and the state that remains between calls.
#include <cstring>

#include <gmock/gmock.h>

#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_export.h"
#include "module/state/module_state.h"
#include "platform/framework/cwinapp.h"
#include "platform/system/registry.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::FontSet;
using module_test::MessageOf;
using module_test::ModuleTest;
using module_test::OpenDialog;
using module_test::PlainFont;
using module_test::WindowMessage;
using testing::IsEmpty;

class EntryPoints : public ModuleTest {
  protected:
    void Store(const char* list, const std::string& text) {
        const std::string key = "Software\\Kovesh\\Tavro\\ZelTrans\\" + std::string(list);
        settings.CreateKey(key);
        settings.SetValue(key, std::string(list) + " 0", {REG_SZ, {text.c_str(), text.c_str() + text.size() + 1}});
    }
};

TEST_F(EntryPoints, ModuleHasStarted) {
    EXPECT_TRUE(ZelTransDLL.bInitialized);
    EXPECT_NE(g_hZelResource, nullptr);
    EXPECT_EQ(ZelTransDLL.hResource, g_hZelResource);
    bool listed = false;
    for (auto* library = AfxGetModuleState()->m_libraryList.GetHead(); library; library = library->m_pNextDLL)
        listed |= library->m_hResource == g_hZelResource && !library->m_bSystem;
    EXPECT_TRUE(listed);
}

TEST_F(EntryPoints, ResourceHandleIsRestoredByMakeTavroFontOnly) {
    HINSTANCE& current = AfxGetModuleState()->m_hCurrentResourceHandle;
    const HINSTANCE host = reinterpret_cast<HINSTANCE>(&desktop);
    const HINSTANCE before = current;
    CZelTransExport module;
    FontSet fonts;
    char path[] = "D:\\MACHINE\\.0001";
    current = host;
    CZelFont::m_bIgnoreErrors = 1;
    EXPECT_FALSE(module.MakeTavroFont(path, nullptr));
    EXPECT_EQ(current, host);
    EXPECT_FALSE(module.MakeTavroFont(path, &fonts));
    EXPECT_EQ(current, host);
    EXPECT_TRUE(module.ZelTranslation(nullptr, &Host()));
    EXPECT_EQ(current, g_hZelResource);
    current = host;
    CString empty;
    EXPECT_TRUE(module.ReadZelmaraMessage(&Host(), empty, empty));
    EXPECT_EQ(current, g_hZelResource);
    EXPECT_EQ(&(module = CZelTransExport()), &module);
    current = before;
}

void First(CWnd*, tag_CharInf*, unsigned) {}
void Second(CWnd*, tag_CharInf*, unsigned) {}

TEST_F(EntryPoints, RegistrationReturnsThePreviousCallback) {
    char directory[MAX_PATH];
    std::memset(directory, 'x', sizeof directory);
    Register_GLV_OnChar(&First, directory);
    EXPECT_EQ(std::strlen(g_szMapDir), 259U) << "a text without a NUL is terminated";
    std::strcpy(directory, "D:\\A\\");
    directory[100] = 'y';
    EXPECT_EQ(Register_GLV_OnChar(&Second, directory), &First);
    EXPECT_EQ(std::memcmp(g_szMapDir, directory, 259), 0) << "the whole buffer, also after its NUL";
    EXPECT_EQ(Register_GLV_OnChar(nullptr, directory), &Second);
}

TEST_F(EntryPoints, OffsetOfTheLastMessageCanBeReset) {
    ZelYOffsetReset(-3);
    EXPECT_EQ(ZelYOffset(), -3);
}

TEST_F(EntryPoints, ConstructorsReadAndStoreSkipWarnings) {
    settings.SetProfileInt("ZELFNTSaveOptions", "SkipWarnings", 3);
    const OpenDialog modal(nullptr);
    EXPECT_EQ(modal.m_bImportSkip, 3);
    EXPECT_EQ(CZelFont::m_bIgnoreErrors, 3);
    EXPECT_EQ(modal.m_iLines, 486);
    EXPECT_EQ(modal.m_bBaselineAlign, 1);
    EXPECT_EQ(modal.m_bTrueFont, 0);
    CString empty;
    const OpenDialog hidden(empty, empty);
    EXPECT_EQ(hidden.m_bImportSkip, 1);
    EXPECT_EQ(settings.GetProfileInt("ZELFNTSaveOptions", "SkipWarnings"), 1);
    EXPECT_FALSE(hidden.IsWindowVisible());
}

struct HiddenCase {
    const char* path;
    const char* font_dir;
    const char* controls[3];  // font directory, message directory, id
};

TEST_F(EntryPoints, HiddenDialogSplitsThePath) {
    Store("FontDir", "D:\\STORED");
    OpenDialog::M_sNextMessage = ".0777";
    for (const HiddenCase& row : {
             HiddenCase{"D:\\DISK\\MESSAGES\\.0012", "", {"D:\\DISK\\MACHINE", "D:\\DISK\\MESSAGES", "0012"}},
             HiddenCase{"D:\\A\\B\\NAME.0012", "", {"D:\\A\\MACHINE", "D:\\A\\B", "0012"}},
             HiddenCase{"D:\\A\\B\\0012", "E:\\F", {"E:\\F", "D:\\A\\B", "0012"}},
             HiddenCase{"D:\\A\\B\\12.TN", "E:\\F\\", {"E:\\F\\", "D:\\A\\B", "TN"}},
             HiddenCase{"\\B\\PROMO", "", {"\\MACHINE", "\\B", "PROMO"}},
             HiddenCase{"D:\\A\\B\\", "", {"D:\\A\\MACHINE", "D:\\A\\B", ""}},
             HiddenCase{
                 "D:\\.0012", "E:\\F", {"D:\\STORED", "", ".0777"}},  // no parent directory, so nothing is filled
             HiddenCase{".0012", "E:\\F", {"D:\\STORED", "", ".0777"}},
             HiddenCase{"D:/A/B/.0012", "", {"D:\\STORED", "", ".0777"}},
         }) {
        CString path(row.path), font_dir(row.font_dir);
        OpenDialog dialog(path, font_dir);
        const script::DialogDriver driver(dialog);
        EXPECT_EQ(driver.Text(ImportControl::kFontDirBox), row.controls[0]) << row.path;
        EXPECT_EQ(driver.Text(ImportControl::kMessageDirBox), row.controls[1]) << row.path;
        EXPECT_EQ(driver.Text(ImportControl::kMessageIdEdit), row.controls[2]) << row.path;
    }
}

TEST_F(EntryPoints, ReadZelmaraMessageStoresNoListsAndNoPosition) {
    WriteFont(1, PlainFont());
    WriteMessage(MessageOf({files::EmptyRow(0)}));
    Import();
    EXPECT_FALSE(settings.KeyExists("Software\\Kovesh\\Tavro\\ZelTrans\\FontDir"));
    EXPECT_EQ(settings.GetProfileInt("ZELFTPSaveOptions", "DialogX"), std::nullopt);
    EXPECT_EQ(OpenDialog::M_sNextMessage, ".0002");
    EXPECT_THAT(desktop.Modals(), IsEmpty());
}

TEST_F(EntryPoints, PathWithoutBackslashImportsFromTheStoredDirectories) {
    WriteMessage(MessageOf({files::EmptyRow(0)}), ".0042");
    Store("FontDir", "D:\\MACHINE");
    Store("MessageDir", "D:\\MESSAGES");
    OpenDialog::M_sNextMessage = "42";
    CString path(".0001"), font_dir;
    CZelTransExport().ReadZelmaraMessage(&Host(), path, font_dir);
    EXPECT_EQ(Order(), "1212 1157 char*1 1181 1180 1213 15");
    EXPECT_EQ(OpenDialog::M_sNextMessage, ".0043");
}

TEST_F(EntryPoints, HostMaySetOptionsWhenTheDialogIsReady) {
    WriteFont(1, PlainFont());
    files::MessageFile message = MessageOf({files::RowFromText(50, "A", 0, 0)});
    message.pal = true;
    WriteMessage(message);
    on_message = [](const WindowMessage& sent) {
        if (sent.message != 1212) return;
        auto& dialog = *reinterpret_cast<CZelTransDlg*>(sent.lParam);
        EXPECT_EQ(script::DialogDriver(dialog).List(ImportControl::kFontDirBox).size(), 0U)
            << "before the recent lists are loaded";
        dialog.m_iLines = 576;
        dialog.m_bTrueFont = 1;
    };
    Store("FontDir", "D:\\STORED");
    RunDialog([](script::DialogDriver& user, CZelTransDlg&) {
        user.Type(ImportControl::kMessageIdEdit, "1");
        user.Press(ImportControl::kReadButton);
    });
    ASSERT_EQ(chars.size(), 1U);
    EXPECT_EQ(chars[0].info.font_copy, nullptr);
    for (const std::string& box : Boxes()) EXPECT_EQ(box.find("Video Standard"), std::string::npos);
}

}  // namespace

}  // namespace zel::test
