// The copy button of the import dialog.
#include <gmock/gmock.h>

#include "diskcopy/copy_controls.h"
#include "module/contract/dialog_ids.h"
#include "module/tools/open_copy_log.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::MessageOf;
using module_test::ModuleTest;
using testing::ElementsAre;

class CopyButton : public ModuleTest {};

TEST_F(CopyButton, CopiesADiskAndShowsTheLog) {
    WriteMessage(MessageOf({files::RowFromText(60, "AB", 0, 0)}), ".0012");
    WriteFont(1, module_test::PlainFont());
    desktop.HandleDialog(diskcopy::kCopyDialog, [](CDialog& dialog) {
        script::DialogDriver user(dialog);
        EXPECT_TRUE(user.Type(diskcopy::kCopySourceEdit, "D:\\"));
        EXPECT_TRUE(user.Type(diskcopy::kCopyTargetEdit, "D:\\a copy"));
        EXPECT_TRUE(user.Press(IDOK));
    });
    RunDialog([&](script::DialogDriver& user, CZelTransDlg&) {
        EXPECT_TRUE(user.Press(ImportControl::kCopyFilesButton));
        EXPECT_THAT(desktop.Commands(), ElementsAre("Notepad D:\\a copy\\CopyLog.txt"));
        user.Type(ImportControl::kMessageDirBox, "D:\\a copy\\MESSAGES");
        user.Type(ImportControl::kFontDirBox, "D:\\a copy\\MACHINE");
        user.Type(ImportControl::kMessageIdEdit, "12");
        user.Press(ImportControl::kReadButton);
    });
    EXPECT_EQ(chars.size(), 2u) << "what was copied can be imported";
}

TEST_F(CopyButton, PassesAnyPathUnchanged) {
    std::string text = "$(touch x) \"; %s %n" + std::string(100000, 'n');
    tools::OpenCopyLog(text.data());
    tools::OpenCopyLog(nullptr);
    EXPECT_THAT(desktop.Commands(), ElementsAre("Notepad " + text, "Notepad "));
}

}  // namespace

}  // namespace zel::test
