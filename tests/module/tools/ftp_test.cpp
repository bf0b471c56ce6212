// The FTP dialog: its requests to the host, its stored settings and its template.
#include <gmock/gmock.h>

#include "module/contract/dialog_ids.h"
#include "module/contract/host_messages.h"
#include "module/contract/zel_trans_ftp.h"
#include "module/resources/ftp_dialog.h"
#include "module/tools/stored_password.h"
#include "support/module_fixture.h"

namespace zel::test {

namespace {

using module_test::ModuleTest;
using module_test::OpenDialog;
using module_test::WindowMessage;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kSection[] = "ZELFTPSaveOptions";
constexpr char kFallback[] = "RGBFTPSaveOptions";

std::string Scrambled(const char* password) {
    CString s(password);
    tools::ScramblePassword(s);
    return s.GetString();
}

class Ftp : public ModuleTest {
  protected:
    Ftp() {
        on_message = [this](const WindowMessage& sent) { Record(sent); };
    }

    /// Opens the dialog by the button of the import dialog. A dialog that `user` leaves open is closed.
    void Run(std::function<void(script::DialogDriver&)> user) {
        desktop.HandleDialog(kFtpDialog, [this, &user](CDialog& dialog) {
            shown = static_cast<CZelTransFTP*>(&dialog);
            script::DialogDriver driver(dialog);
            user(driver);
        });
        RunDialog([](script::DialogDriver& main, CZelTransDlg&) { main.Press(ImportControl::kFtpButton); });
    }

    void StoreList(const std::string& list, const std::vector<std::string>& entries) {
        OpenDialog main(nullptr);
        for (std::size_t i = 0; i < entries.size(); ++i) {
            std::string name = list, text = entries[i];
            main.StoreRecentList(static_cast<int>(i), name.data(), text.data());
        }
    }
    std::vector<std::string> StoredList(const std::string& list) {
        OpenDialog main(nullptr);
        std::vector<std::string> entries;
        std::string name = list;
        char text[MAX_PATH];
        while (main.RestoreRecentList(static_cast<int>(entries.size()), name.data(), text)) entries.emplace_back(text);
        return entries;
    }
    std::string Text(const char* entry, const char* section = kSection) {
        return settings.GetProfileText(section, entry).value_or("none");
    }
    int Number(const char* entry) { return settings.GetProfileInt(kSection, entry).value_or(-1); }

    /// Reads the members as a host does.
    void Record(const WindowMessage& sent) {
        if (sent.message != kMsgFtp) return;
        EXPECT_EQ(sent.target, 'm');
        EXPECT_EQ(sent.wParam, 0U);
        auto& ftp = *reinterpret_cast<CZelTransFTP*>(sent.lParam);
        EXPECT_EQ(&ftp, shown);
        EXPECT_NE(ftp.m_pTransDlg, nullptr);
        CString fields;
        fields.Format("%s %s@%s '%s' %s > %s : %s, save %d skip %d over %d passive %d",
                      ftp.m_bExecute ? "copy" : "browse", ftp.m_strUsername.GetString(), ftp.m_strIpAddress.GetString(),
                      ftp.m_strPassword.GetString(), ftp.m_strRemoteDir.GetString(), ftp.m_strLocalDir.GetString(),
                      ftp.m_strFile.GetString(), ftp.m_bSavePassword, ftp.m_bSkipWarnings, ftp.m_bOverwriteAll,
                      ftp.m_bPassive);
        requests.emplace_back(fields);
        if (host) host(ftp);
    }

    static void FillIn(script::DialogDriver& user) {
        user.Type(FtpControl::kLocalDirBox, "D:\\MESSAGES");
        user.Type(FtpControl::kRemoteDirBox, "/msgs");
        user.Type(FtpControl::kFileEdit, ".0012");
        user.Type(FtpControl::kAddressBox, "10.0.0.1");
        user.Type(FtpControl::kUsernameEdit, "guest");
        user.Type(FtpControl::kPasswordEdit, "secret");
        user.Check(FtpControl::kSavePasswordCheck);
        user.Check(FtpControl::kOverwriteCheck);
        user.Check(FtpControl::kPassiveCheck);
    }

    std::vector<std::string> requests;
    std::function<void(CZelTransFTP&)> host;
    CZelTransFTP* shown = nullptr;
};

const char* const kFilled = "guest@10.0.0.1 'secret' /msgs > D:\\MESSAGES : .0012, save 1 skip 0 over 1 passive 1";

// The request to the host.

TEST_F(Ftp, PassesTheControlsToTheHost) {
    Run([&](script::DialogDriver& user) {
        EXPECT_EQ(user.Caption(), "Copy Zelmara! Files via FTP");
        EXPECT_EQ(CWnd::GetFocus()->m_hWnd, shown->GetDlgItem(FtpControl::kFileEdit)->m_hWnd);
        user.Press(FtpControl::kExecuteButton);
        FillIn(user);
        EXPECT_EQ(shown->m_bOverwriteAll, 1) << "changed by the click";
        user.Press(FtpControl::kExecuteButton);
        EXPECT_EQ(shown->m_strPassword.GetLength(), 80) << "in its stored form";
        user.Press(FtpControl::kExecuteButton);
        user.Press(FtpControl::kBrowseRemoteButton);
    });
    EXPECT_THAT(requests,
                ElementsAre("copy @ ''  >  : , save 0 skip 0 over 0 passive 0", std::string("copy ") + kFilled,
                            std::string("copy ") + kFilled, std::string("browse ") + kFilled));
}

TEST_F(Ftp, ShowsAndStoresWhatTheHostSets) {
    StoreList("FTPRemoteDir", {"/a", "/FOUND"});
    host = [](CZelTransFTP& ftp) {
        ftp.m_strRemoteDir = "/found";
        ftp.m_strFile = ".0033";
        ftp.m_strLocalDir = "not shown";
    };
    Run([](script::DialogDriver& user) {
        EXPECT_EQ(user.Text(FtpControl::kRemoteDirBox), "/a") << "the newest entry";
        user.Press(FtpControl::kBrowseRemoteButton);
        EXPECT_EQ(user.Text(FtpControl::kRemoteDirBox), "/found");
        EXPECT_EQ(user.Text(FtpControl::kFileEdit), ".0033");
        EXPECT_EQ(user.Text(FtpControl::kLocalDirBox), "");
        EXPECT_THAT(user.List(FtpControl::kRemoteDirBox), ElementsAre("/found", "/a"));
    });
    EXPECT_THAT(StoredList("FTPRemoteDir"), ElementsAre("/found", "/a"));
    EXPECT_EQ(Text("MessageNumber"), ".0033");
}

// What is stored.

TEST_F(Ftp, StoresAllAfterARequestAndRestoresIt) {
    Run([](script::DialogDriver& user) {
        FillIn(user);
        user.Press(FtpControl::kBrowseRemoteButton);
    });
    EXPECT_EQ(Text("IPAddress") + Text("Username") + Text("MessageNumber"), "10.0.0.1guest.0012");
    EXPECT_EQ(Number("SavePassword") + Number("OverwriteAll") + Number("Passive FTP Transfer"), 3);
    EXPECT_EQ(Text("Password").size(), 80U);
    EXPECT_EQ(Text("Password").find("secret"), std::string::npos);
    Run([](script::DialogDriver& user) { user.Press(FtpControl::kExecuteButton); });
    EXPECT_EQ(requests.back(), std::string("copy ") + kFilled);
    EXPECT_THAT(StoredList("FTPIpAddr"), ElementsAre("10.0.0.1"));
}

TEST_F(Ftp, ClosingStoresNothing) {
    for (const bool enter : {true, false}) {
        Run([&](script::DialogDriver& user) {
            FillIn(user);
            enter ? user.PressEnter() : user.Press(IDCANCEL);
            EXPECT_EQ(shown->GetResult(), enter ? IDOK : IDCANCEL);
            EXPECT_EQ(shown->m_strFile, enter ? ".0012" : "");
        });
    }
    EXPECT_EQ(Text("IPAddress"), "none");
    EXPECT_THAT(StoredList("FTPLocalDir"), IsEmpty());
    EXPECT_THAT(requests, IsEmpty());
}

struct PasswordCase {
    const char* name;
    bool save;
    std::string typed;
    const char* shown_next;
};

TEST_F(Ftp, KeepsAnEarlierPasswordUnlessThereIsANewOneToSave) {
    for (const PasswordCase& row : {PasswordCase{"save off", false, "new", ""},
                                    {"nothing typed", true, "", "old"},
                                    {"saved", true, "new", "new"},
                                    {"too long for the stored form", true, std::string(79, 'x'), ""}}) {
        settings.SetProfileText(kSection, "IPAddress", "host");
        settings.SetProfileInt(kSection, "SavePassword", 1);
        const std::string before = Scrambled("old");
        settings.SetProfileText(kSection, "Password", before);
        Run([&](script::DialogDriver& user) {
            EXPECT_EQ(user.Text(FtpControl::kPasswordEdit), "old");
            user.Type(FtpControl::kPasswordEdit, row.typed);
            user.Check(FtpControl::kSavePasswordCheck, row.save);
            user.Press(FtpControl::kExecuteButton);
        });
        EXPECT_EQ(Number("SavePassword"), row.save ? 1 : 0) << row.name;
        EXPECT_EQ(Text("Password") == before, !row.save || row.typed.empty()) << row.name;
        Run([&](script::DialogDriver& user) {
            EXPECT_EQ(user.Text(FtpControl::kPasswordEdit), row.shown_next) << row.name;
        });
    }
}

TEST_F(Ftp, SkipWarningsIsStoredByTheClickAndShownByTheImportDialog) {
    desktop.HandleDialog(kFtpDialog, [&](CDialog& dialog) {
        script::DialogDriver(dialog).Press(FtpControl::kSkipWarningsCheck);
        EXPECT_EQ(settings.GetProfileInt("ZELFNTSaveOptions", "SkipWarnings"), 1);
    });
    RunDialog([](script::DialogDriver& main, CZelTransDlg& dialog) {
        main.Press(ImportControl::kFtpButton);
        EXPECT_EQ(dialog.m_bImportSkip, 1);
        EXPECT_TRUE(main.IsChecked(ImportControl::kSkipWarningsCheck));
    });
    Run([](script::DialogDriver& user) { EXPECT_TRUE(user.IsChecked(FtpControl::kSkipWarningsCheck)); });
}

// The second section.

TEST_F(Ftp, ReadsTheAccountOfTheFallbackSectionOnAFirstRun) {
    settings.SetProfileText(kFallback, "IPAddress", "10.9.9.9");
    settings.SetProfileText(kFallback, "Username", "other");
    settings.SetProfileInt(kFallback, "SavePassword", 1);
    settings.SetProfileText(kFallback, "Password", "never scrambled");
    settings.SetProfileText(kSection, "Username", "own");
    StoreList("FTPIpAddr", {"older"});
    Run([](script::DialogDriver& user) {
        EXPECT_EQ(user.Text(FtpControl::kAddressBox), "10.9.9.9");
        EXPECT_THAT(user.List(FtpControl::kAddressBox), ElementsAre("10.9.9.9", "older"));
        EXPECT_EQ(user.Text(FtpControl::kUsernameEdit), "other");
        EXPECT_EQ(user.Text(FtpControl::kPasswordEdit), "never scrambled");
        EXPECT_TRUE(user.IsChecked(FtpControl::kSavePasswordCheck));
        user.Press(FtpControl::kExecuteButton);
    });
    EXPECT_EQ(Text("IPAddress") + Text("Username"), "10.9.9.9other");
    EXPECT_EQ(Text("Password", kFallback), "never scrambled");
    settings.SetProfileText(kFallback, "IPAddress", "changed");
    Run([](script::DialogDriver& user) { EXPECT_EQ(user.Text(FtpControl::kAddressBox), "10.9.9.9"); });
}

TEST_F(Ftp, KeepsItsOwnAccountAndAStoredAddressThatNoListHas) {
    settings.SetProfileText(kSection, "Username", "own");
    settings.SetProfileText(kSection, "Password", "not read");
    settings.SetProfileText(kFallback, "Username", "other");
    for (const char* address : {"", "10.0.0.1"}) {
        settings.SetProfileText(kSection, "IPAddress", address);
        Run([&](script::DialogDriver& user) {
            EXPECT_EQ(user.Text(FtpControl::kAddressBox), address);
            EXPECT_EQ(user.Text(FtpControl::kUsernameEdit) + user.Text(FtpControl::kPasswordEdit), "own");
        });
    }
}

// Recent lists.

TEST_F(Ftp, AnEntryInAnotherCaseMovesToTheTopAsTyped) {
    StoreList("FTPIpAddr", {"one", "Two", "three"});
    StoreList("FTPLocalDir", {"D:\\a", "D:\\b"});
    Run([](script::DialogDriver& user) {
        user.Type(FtpControl::kAddressBox, "TWO");
        user.Choose(FtpControl::kLocalDirBox, 1);
        user.Press(FtpControl::kExecuteButton);
        EXPECT_EQ(user.Text(FtpControl::kAddressBox), "TWO");
    });
    EXPECT_THAT(StoredList("FTPIpAddr"), ElementsAre("TWO", "one", "three"));
    EXPECT_THAT(StoredList("FTPLocalDir"), ElementsAre("D:\\b", "D:\\a"));
}

// The local Browse.

TEST_F(Ftp, BrowsesForALocalDirectory) {
    WriteFile("ELSEWHERE/.0009", "x");
    desktop.QueueFile("D:\\ELSEWHERE\\.0009");
    Run([](script::DialogDriver& user) {
        user.Type(FtpControl::kLocalDirBox, "D:\\MESSAGES");
        user.Press(FtpControl::kBrowseLocalButton);
        EXPECT_THAT(user.List(FtpControl::kLocalDirBox), ElementsAre("D:\\ELSEWHERE"));
        EXPECT_EQ(user.Text(FtpControl::kFileEdit), "") << "the file name is dropped";
        user.Press(FtpControl::kBrowseLocalButton);
        EXPECT_EQ(user.Text(FtpControl::kLocalDirBox), "D:\\ELSEWHERE") << "a cancelled choice changes nothing";
    });
    EXPECT_EQ(desktop.FileDialogs().at(0).title, "Local Directory");
    EXPECT_EQ(desktop.FileDialogs()[0].initial_dir, "D:\\MESSAGES");
    EXPECT_THAT(StoredList("FTPLocalDir"), IsEmpty());
    EXPECT_THAT(requests, IsEmpty());
}

// The template.

TEST(FtpTemplate, HasItsTexts) {
    std::string texts;
    for (const framework::ControlTemplate& control : resources::kFtpControls)
        texts += (control.id > 0 ? std::to_string(control.id) : std::string()) + control.text + "|";
    EXPECT_EQ(texts,
              "&Local Dir :|1051|1053&Browse |&Remote Dir :|1050|1052Brows&e |&File :|1044||&IP Address : |1039|"
              "&Username : |1040|&Password : |1041|1042&Save|Options|1055Skip &Warnings|1054&Overwrite All|"
              "1060Passi&ve FTP |1038FTP E&xecute|2Close|");
}

}  // namespace

}  // namespace zel::test
