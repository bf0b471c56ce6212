#include "platform/script/headless_desktop.h"

#include <gtest/gtest.h>

#include "platform/framework/cfiledialog.h"
#include "platform/framework/message_box.h"
#include "platform/test_dialog.h"

namespace zel::test {

namespace {

class Headless : public testing::Test {
  protected:
    void SetUp() override { seam::SetDesktop(&m_desktop); }
    void TearDown() override { seam::SetDesktop(nullptr); }
    static int ShowBox(UINT style) { return MessageBoxA(nullptr, "text", "caption", style); }

    const ResourcesInForce m_resources;
    script::HeadlessDesktop m_desktop;
};

TEST_F(Headless, AnswersABoxByItsStyle) {
    EXPECT_EQ(ShowBox(48), IDOK);
    EXPECT_EQ(ShowBox(MB_OKCANCEL), IDOK);
    EXPECT_EQ(ShowBox(0x40033), IDNO);
    m_desktop.SetYesNoAnswer(IDCANCEL);
    EXPECT_EQ(ShowBox(MB_YESNOCANCEL), IDCANCEL);
    EXPECT_EQ(ShowBox(MB_YESNO), IDNO);
    m_desktop.SetYesNoAnswer(IDYES);
    EXPECT_EQ(ShowBox(MB_YESNO), IDYES);
    EXPECT_EQ(ShowBox(MB_RETRYCANCEL), IDCANCEL);
}

TEST_F(Headless, UsesItsQueueThenItsFunctionThenTheStyle) {
    std::vector<int> observed;
    m_desktop.ObserveBoxes([&](const script::HeadlessDesktop::Box& box) { observed.push_back(box.answer); });
    m_desktop.AnswerBoxes([](const script::HeadlessDesktop::Box& box) { return box.style == MB_YESNO ? IDYES : 0; });
    m_desktop.QueueBoxAnswer(IDCANCEL);
    EXPECT_EQ(ShowBox(MB_YESNO), IDCANCEL);
    EXPECT_EQ(ShowBox(MB_YESNO), IDYES);
    EXPECT_EQ(ShowBox(MB_YESNOCANCEL), IDNO);
    EXPECT_EQ(observed, (std::vector{IDCANCEL, IDYES, IDNO}));
    EXPECT_EQ(m_desktop.Boxes().size(), 3u);
}

TEST_F(Headless, ReturnsAFileInTheModulesForm) {
    char name[MAX_PATH] = ".0012";
    CFileDialog dialog(TRUE, nullptr, nullptr, 0);
    dialog.m_ofn.lpstrFile = name;
    dialog.m_ofn.lpstrInitialDir = "\\f\\";
    dialog.m_ofn.lpstrTitle = "Browse for Font File";
    dialog.m_ofn.lpstrFilter = ".*";
    m_desktop.QueueFile("/disk/fonts/.0044");
    ASSERT_EQ(dialog.DoModal(), IDOK);
    EXPECT_STREQ(dialog.GetPathName(), "\\disk\\fonts\\.0044");
    EXPECT_STREQ(dialog.GetFileName(), ".0044");
    EXPECT_STREQ(dialog.GetFileTitle(), ".0044");
    const auto& shown = m_desktop.FileDialogs().at(0);
    EXPECT_EQ(shown.title, "Browse for Font File");
    EXPECT_EQ(shown.initial_dir, "\\f\\");
    EXPECT_EQ(shown.initial_name, ".0012");
    EXPECT_EQ(shown.path, "\\disk\\fonts\\.0044");
}

TEST_F(Headless, CancelsAFileDialogWithoutAFileOrWithATooLongPath) {
    CFileDialog dialog(TRUE, "*.*", "first.ext", OFN_HIDEREADONLY | OFN_EXPLORER, "*.*||");
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    m_desktop.QueueFile(std::nullopt);
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    m_desktop.QueueFile(std::string(260, 'x'));
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_STREQ(dialog.GetPathName(), "first.ext");
    EXPECT_STREQ(dialog.GetFileTitle(), "first");
    m_desktop.AnswerFileDialogs([](const auto& shown) { return shown.initial_name + "x"; });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_STREQ(dialog.GetFileName(), "first.extx");
}

TEST_F(Headless, ClosesADialogThatNobodyEnds) {
    TestDialog dialog;
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog.events, "close cancel ");
    ASSERT_EQ(m_desktop.Modals().size(), 1u);
    EXPECT_TRUE(m_desktop.Modals()[0].left_open);
    EXPECT_EQ(m_desktop.Modals()[0].template_id, kTestDialog);
}

TEST_F(Headless, RefusesActionsOnControlsThatCanNotBeUsed) {
    m_desktop.HandleDialog(kTestDialog, [](CDialog& dialog) {
        script::DialogDriver user(dialog);
        EXPECT_FALSE(user.Press(kHidden));
        EXPECT_FALSE(user.Press(kDisabled));
        EXPECT_FALSE(user.Press(999));
        dialog.GetDlgItem(kEdit)->SendMessage(EM_LIMITTEXT, 3);
        EXPECT_TRUE(user.Type(kEdit, "12345"));
        EXPECT_EQ(user.Text(kEdit), "123");
        EXPECT_FALSE(user.IsVisible(kHidden));
        EXPECT_FALSE(user.IsEnabled(kDisabled));
        EXPECT_TRUE(user.Press(IDOK));
        EXPECT_FALSE(user.Press(kCheck)) << "the dialog has ended";
    });
    TestDialog dialog;
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_FALSE(m_desktop.Modals().at(0).left_open);
}

}  // namespace

}  // namespace zel::test
