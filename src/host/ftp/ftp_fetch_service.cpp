#include "host/ftp/ftp_fetch_service.h"

#include <algorithm>
#include <memory>

#include "host/ftp/list_directory.h"
#include "host/ftp/remote_name.h"
#include "host/ftp/remote_url.h"
#include "module/contract/zel_trans_ftp.h"
#include "platform/seam/desktop.h"
#include "platform/system/files.h"

namespace zel::ftp {

namespace {

constexpr char kCaption[] = "Copy Zelmara! Files via FTP";
constexpr std::size_t kMaxShownNames = 30;    // in a box
constexpr std::size_t kMaxShownReasons = 10;  // in a box

class WaitCursor {
  public:
    WaitCursor() { seam::GetDesktop().SetWaitCursor(true); }
    ~WaitCursor() { seam::GetDesktop().SetWaitCursor(false); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

std::string Trimmed(const CString& box) {
    std::string text = box.GetString();
    text.erase(0, std::min(text.find_first_not_of(' '), text.size()));
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

// The server's directory; a user may also type backslashes.
std::string RemoteDirectory(const CString& box) {
    std::string directory = Trimmed(box);
    if (directory.find('/') == std::string::npos) std::ranges::replace(directory, '\\', '/');
    while (directory.size() > 1 && directory.back() == '/') directory.pop_back();
    return directory;
}

// One request of the dialog.
class Request : public FetchObserver {
  public:
    Request(CZelTransFTP& dialog, const FetchServiceOptions& options) : m_dialog(dialog), m_options(options) {
        seam::GetDesktop().IsKeyDown(VK_ESCAPE);  // discards an earlier key press
    }

    void Transfer() {
        std::string why;
        const std::optional<Selection> selection = Selection::Parse(Trimmed(m_dialog.m_strFile), why);
        if (!selection) return Fail(why);
        const std::string to = Trimmed(m_dialog.m_strLocalDir);
        if (to.empty()) return Fail("no local directory is given");
        if (!Connect()) return;
        const FetchRequest request{.source = Trimmed(m_dialog.m_strIpAddress),
                                   .directory = RemoteDirectory(m_dialog.m_strRemoteDir),
                                   .selection = *selection,
                                   .to = system::NativePath(to.c_str()),
                                   .overwrite = m_dialog.m_bOverwriteAll != 0,
                                   .fonts = true,
                                   .listing_limits = {}};
        const FetchReport report = [&] {
            const WaitCursor wait;
            return RunFetch(*m_session, request, *this);
        }();
        if (!report.failure.empty() && !report.cancelled) return Fail(report.failure);
        if (m_dialog.m_bSkipWarnings == 0) ShowReport(report);
    }

    void Browse() {
        if (!Connect()) return;
        std::string directory = RemoteDirectory(m_dialog.m_strRemoteDir);
        while (const std::optional<RemoteChoice> choice = Choose(directory)) {
            if (choice->kind == RemoteChoice::Kind::kOpen) {
                directory = choice->name == ".." ? Parent(directory) : Below(directory, choice->name);
                continue;
            }
            m_dialog.m_strRemoteDir = directory.c_str();
            if (!choice->name.empty()) m_dialog.m_strFile = choice->name.c_str();
            return;
        }
    }

    bool Cancelled() override {
        m_cancelled = m_cancelled || seam::GetDesktop().IsKeyDown(VK_ESCAPE) ||
                      (m_options.observer != nullptr && m_options.observer->Cancelled());
        return m_cancelled;
    }
    void OnProgress(const std::string& name, std::uint64_t bytes, std::uint64_t size) override {
        if (m_options.observer != nullptr) m_options.observer->OnProgress(name, bytes, size);
    }
    void OnFile(const FileReport& file) override {
        if (m_options.observer != nullptr) m_options.observer->OnFile(file);
    }
    void OnNote(const std::string& text) override {
        m_notes += "\n" + text;
        if (m_options.observer != nullptr) m_options.observer->OnNote(text);
    }

  private:
    bool Connect() {
        ServerOptions server;
        if (!ParseHostAndPort(Trimmed(m_dialog.m_strIpAddress), server.host, server.port)) {
            Fail("invalid address of the server");
            return false;
        }
        server.user = Trimmed(m_dialog.m_strUsername);
        server.password = Secret(m_dialog.m_strPassword.GetString());
        server.passive = m_dialog.m_bPassive != 0;
        server.tls = m_options.tls;
        server.certificates = m_options.certificates;
        server.connect_seconds = m_options.connect_seconds;
        server.stall_seconds = m_options.stall_seconds;
        std::string why;
        m_session = MakeFtpSession(
            std::move(server), [this] { return Cancelled(); }, why);
        if (!m_session) Fail(why);
        return m_session != nullptr;
    }

    // Lists the directory and lets the user choose. A relative directory becomes absolute once the login directory is
    // known.
    std::optional<RemoteChoice> Choose(std::string& directory) {
        RemoteView view;
        constexpr int kMaxAttempts = 3;
        const FtpResult result = [&] {
            const WaitCursor wait;
            return ListDirectory(*m_session, directory, {}, kMaxAttempts, view.listing);
        }();
        if (!result.Done()) {
            if (result.error != FtpError::kCancelled) {
                Fail((directory.empty() ? "" : Printable(directory) + ": ") + result.reason);
            }
            return std::nullopt;
        }
        const std::string login = m_session->LoginDirectory();
        if (!directory.starts_with('/') && login.starts_with('/') && Printable(login) == login) {
            directory = directory.empty() ? login : Below(login, directory);
        }
        view.directory = directory;
        if (m_options.chooser) return m_options.chooser(view);
        ShowNames(view);
        return std::nullopt;
    }

    static std::string Parent(const std::string& directory) {
        std::string parent = Sibling(directory, "");
        while (parent.size() > 1 && parent.back() == '/') parent.pop_back();
        return parent;
    }

    void ShowNames(const RemoteView& view) const {
        std::string text = view.directory + ": " + std::to_string(view.listing.entries.size()) + " entries\n";
        for (std::size_t at = 0; at < std::min(kMaxShownNames, view.listing.entries.size()); ++at) {
            const ListingEntry& entry = view.listing.entries[at];
            text += "\n" + entry.name + (entry.kind == EntryKind::kDirectory ? "/" : "");
        }
        if (view.listing.entries.size() > kMaxShownNames) text += "\n...";
        ShowBox(text, MB_ICONASTERISK);
    }

    void ShowReport(const FetchReport& report) const {
        std::string text = (report.cancelled ? "Cancelled: " : "") + report.Summary();
        std::size_t reasons = 0;
        for (const FileReport& file : report.files) {
            if (file.reason.empty() || reasons++ >= kMaxShownReasons) continue;
            text += "\n" + file.name + ": " + file.reason;
        }
        if (reasons > kMaxShownReasons) text += "\n" + std::to_string(reasons - kMaxShownReasons) + " more";
        ShowBox(text + m_notes, report.Done() ? MB_ICONASTERISK : MB_ICONEXCLAMATION);
    }

    void Fail(const std::string& reason) const { ShowBox(reason, MB_ICONEXCLAMATION); }

    void ShowBox(const std::string& text, UINT icon) const {
        seam::GetDesktop().ShowMessageBox(m_dialog.m_hWnd, text, kCaption, MB_OK | icon);
    }

    CZelTransFTP& m_dialog;
    const FetchServiceOptions& m_options;
    std::unique_ptr<FtpSession> m_session;
    std::string m_notes;
    bool m_cancelled = false;
};

}  // namespace

void FetchService::Handle(CZelTransFTP& dialog) {
    Request request(dialog, m_options);
    if (dialog.m_bExecute) {
        request.Transfer();
    } else {
        request.Browse();
    }
}

}  // namespace zel::ftp
