// The dialog of the FTP copy in a host, against a server.
#include <gmock/gmock.h>

#include "host/ftp/fetch_fixture.h"
#include "host/ftp/ftp_fetch_service.h"
#include "host/reference_host.h"
#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_export.h"
#include "module/contract/zel_trans_ftp.h"
#include "module/resources/ftp_dialog.h"
#include "module/resources/import_dialog.h"
#include "platform/script/memory_settings_store.h"

namespace zel::test {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class FtpDialog : public FtpFetch {
  protected:
    FtpDialog() : m_store_before(seam::SetSettingsStore(&m_store)), m_desktop_before(seam::SetDesktop(&m_desktop)) {}
    ~FtpDialog() override {
        seam::SetDesktop(m_desktop_before);
        seam::SetSettingsStore(m_store_before);
    }

    /// Opens the dialog, fills it in, and leaves it to the user.
    void Run(const std::function<void(script::DialogDriver&)>& user) {
        ftp::FetchService service(m_service);
        host::ReferenceHost host{host::HostOptions()};
        host.SetFtpService(&service);
        m_desktop.HandleDialog(kFtpDialog, [&](CDialog& dialog) {
            script::DialogDriver driver(dialog);
            driver.Type(FtpControl::kAddressBox, "127.0.0.1:" + std::to_string(m_options.port));
            driver.Type(FtpControl::kLocalDirBox, Here().string());
            driver.Type(FtpControl::kFileEdit, "1-2");
            driver.Check(FtpControl::kPassiveCheck);
            user(driver);
        });
        m_desktop.HandleDialog(kImportDialog,
                               [](CDialog& dialog) { script::DialogDriver(dialog).Press(ImportControl::kFtpButton); });
        CZelTransExport().ZelTranslation(host.HostWindow());
        host.EndCall(host::CallEnd::kReturned);
    }

    /// The newest box of the copy.
    std::string Box() const {
        std::string text = "none";
        for (const script::HeadlessDesktop::Box& box : m_desktop.Boxes()) {
            if (box.caption == "Copy Zelmara! Files via FTP") text = box.text;
        }
        return text;
    }

    script::MemorySettingsStore m_store;
    script::HeadlessDesktop m_desktop;
    seam::SettingsStore* m_store_before;
    seam::Desktop* m_desktop_before;
    ftp::FetchServiceOptions m_service;
};

TEST_F(FtpDialog, ExecuteFetchesAndShowsTheResult) {
    Serve({});
    Run([](script::DialogDriver& user) { user.Press(FtpControl::kExecuteButton); });
    EXPECT_EQ(Box(), "3 fetched, 1 missing\nMACHINE/.0031: not on the server");
    EXPECT_EQ(Fetched("MESSAGES/.0002"), Served("MESSAGES/.0002"));
    EXPECT_EQ(Fetched("MACHINE/.0012"), Served("MACHINE/.0012"));
}

TEST_F(FtpDialog, SkipWarningsShowsOnlyErrorsThatPreventTheTransfer) {
    Serve({});
    Run([&](script::DialogDriver& user) {
        user.Check(FtpControl::kSkipWarningsCheck);
        user.Press(FtpControl::kExecuteButton);
        EXPECT_EQ(Box(), "none");
        user.Type(FtpControl::kRemoteDirBox, "/NOWHERE");
        user.Press(FtpControl::kExecuteButton);
        EXPECT_THAT(Box(), HasSubstr("/NOWHERE: no such directory on the server"));
        user.Type(FtpControl::kFileEdit, "../x");
        user.Press(FtpControl::kExecuteButton);
        EXPECT_EQ(Box(), "not a valid name of a message or font: ../x");
    });
}

TEST_F(FtpDialog, EscapeStopsIt) {
    WriteRandom("MESSAGES/.0001", 3000000, 1);
    Serve({});
    int asked = 0;
    m_desktop.AnswerKeys([&](int key) { return key == VK_ESCAPE && ++asked == 5; });
    Run([](script::DialogDriver& user) { user.Press(FtpControl::kExecuteButton); });
    EXPECT_THAT(Box(), StartsWith("Cancelled: "));
    EXPECT_FALSE(std::filesystem::exists(Here() / "MESSAGES/.0002"));
}

TEST_F(FtpDialog, BrowseLeadsToADirectoryAndAFile) {
    Serve({});
    std::string seen;
    using Kind = ftp::RemoteChoice::Kind;
    std::vector<ftp::RemoteChoice> choices{
        {Kind::kOpen, "MACHINE"}, {Kind::kOpen, ".."}, {Kind::kOpen, "MESSAGES"}, {Kind::kTake, ".0003"}};
    m_service.chooser = [&, step = std::size_t{0}](const ftp::RemoteView& view) mutable {
        seen += view.directory + "(" + std::to_string(view.listing.entries.size()) + ") ";
        return std::optional(choices.at(step++));
    };
    Run([](script::DialogDriver& user) {
        user.Press(FtpControl::kBrowseRemoteButton);
        EXPECT_EQ(user.Text(FtpControl::kRemoteDirBox), "/MESSAGES");
        EXPECT_EQ(user.Text(FtpControl::kFileEdit), ".0003");
    });
    EXPECT_EQ(seen, "/(2) /MACHINE(1) /(2) /MESSAGES(3) ");
    EXPECT_EQ(Box(), "none");
}

}  // namespace

}  // namespace zel::test
