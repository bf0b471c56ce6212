// Classes that a host derives from those of the library. This program links the library itself, without special
// options.
#include <typeinfo>

#include <gtest/gtest.h>

#include "module/contract/zeltrans.h"
#include "platform/framework/cwinapp.h"

namespace zel::test {

namespace {

class HostFonts : public CZelFont {
  public:
    int Slots() { return static_cast<int>(IsValidFontIndex(0)) + static_cast<int>(IsValidFontIndex(16)); }
};

class HostExport : public CZelTransExport {};

class HostDialog : public CZelTransDlg {
  public:
    using CZelTransDlg::CZelTransDlg;

    static void SetNextMessage(const char* id) { M_sNextMessage = id; }

    CString shown_id;
    int reads = 0;

  protected:
    BOOL OnInitDialog() override {
        const BOOL result = CZelTransDlg::OnInitDialog();
        GetDlgItemText(ImportControl::kMessageIdEdit, shown_id);
        SendMessage(WM_COMMAND, ImportControl::kReadButton);
        SendMessage(WM_COMMAND, ImportControl::kTrueFontCheck);
        return result;
    }
    afx_msg void OnHostRead() { ++reads; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(HostDialog, CZelTransDlg)
ON_BN_CLICKED(ImportControl::kReadButton, &HostDialog::OnHostRead)
END_MESSAGE_MAP()

/// A main window, and the templates of the module, which an entry point makes available.
class DerivedClasses : public testing::Test {
  protected:
    DerivedClasses() {
        m_main.CreateHostWindow("main");
        AfxGetThread()->m_pMainWnd = &m_main;
        CString path, font_dir;
        HostExport().ReadZelmaraMessage(&m_main, path, font_dir);
    }
    ~DerivedClasses() override { AfxGetThread()->m_pMainWnd = nullptr; }

  private:
    CWnd m_main;
};

TEST_F(DerivedClasses, OfTheDialogHaveItsTypeItsMapAndTheNextId) {
    HostDialog::SetNextMessage(".0042");
    HostDialog dialog(nullptr);
    CWnd& window = dialog;
    EXPECT_EQ(typeid(window), typeid(HostDialog));
    EXPECT_EQ(dynamic_cast<CZelTransDlg*>(&window), &dialog);
    dialog.DoModal();
    EXPECT_EQ(dialog.shown_id, ".0042");
    EXPECT_EQ(dialog.reads, 1) << "the handler of the derived class";
    EXPECT_NE(dialog.m_bTrueFont, 0) << "the handler of the module";
    HostDialog::SetNextMessage("");
}

TEST_F(DerivedClasses, OfTheFontSetUseItsMembers) {
    HostFonts fonts;
    EXPECT_EQ(fonts.Slots(), 1);
}

}  // namespace

}  // namespace zel::test
