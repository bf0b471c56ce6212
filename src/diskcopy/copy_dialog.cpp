#include "diskcopy/copy_dialog.h"

#include <algorithm>
#include <cerrno>
#include <string_view>

#include "base/fold_case.h"
#include "diskcopy/copy_controls.h"
#include "diskcopy/copy_log.h"
#include "platform/framework/cfiledialog.h"
#include "platform/framework/message_box.h"
#include "platform/framework/wait_cursor.h"
#include "platform/system/files.h"
#include "platform/system/keys.h"

namespace zel::diskcopy {

namespace ctl = framework::ctl;

namespace {

constexpr char kCaption[] = "Copy Zelmara! Files";

constexpr framework::ControlTemplate kControls[] = {
    {IDC_STATIC, framework::ControlKind::static_text, "Copy &from :", 7, 9, 44, 10, ctl::none},
    {kCopySourceEdit, framework::ControlKind::edit, nullptr, 54, 7, 190, 14, ctl::tab_stop | ctl::auto_scroll},
    {kCopySourceBrowse, framework::ControlKind::push_button, "&Browse", 250, 7, 53, 14, ctl::tab_stop},
    {IDC_STATIC, framework::ControlKind::static_text, "Copy &to :", 7, 27, 44, 10, ctl::none},
    {kCopyTargetEdit, framework::ControlKind::edit, nullptr, 54, 25, 190, 14, ctl::tab_stop | ctl::auto_scroll},
    {kCopyTargetBrowse, framework::ControlKind::push_button, "B&rowse", 250, 25, 53, 14, ctl::tab_stop},
    {IDC_STATIC, framework::ControlKind::static_text, "Files that are there already :", 7, 45, 100, 10, ctl::none},
    {kCopySkipRadio, framework::ControlKind::radio_button, "&Skip", 110, 44, 40, 11,
     ctl::automatic | ctl::group | ctl::tab_stop},
    {kCopyOverwriteRadio, framework::ControlKind::radio_button, "&Overwrite", 154, 44, 60, 11, ctl::automatic},
    {IDC_STATIC, framework::ControlKind::static_text, "Files to &copy :", 7, 60, 100, 10, ctl::group},
    {kCopyFileList, framework::ControlKind::list_box, nullptr, 7, 71, 237, 110, ctl::tab_stop},
    {kCopyShowButton, framework::ControlKind::push_button, "Sho&w Files", 250, 71, 53, 16, ctl::tab_stop},
    {IDOK, framework::ControlKind::default_button, "Co&py", 250, 143, 53, 16, ctl::tab_stop},
    {IDCANCEL, framework::ControlKind::push_button, "Close", 250, 165, 53, 16, ctl::tab_stop},
    {kCopyStatus, framework::ControlKind::static_text, "", 7, 186, 296, 11, ctl::static_edge},
};
constexpr framework::DialogTemplate kDialogs[] = {{kCopyDialog, kCaption, "MS Sans Serif", 8, 310, 203,
                                                   WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME | DS_SETFONT,
                                                   kControls}};
constexpr HINSTANCE__ kInstance{"diskcopy", kDialogs};

/// The folder of a chosen file; for a file in MESSAGES or MACHINE, the disk's root.
std::string FolderOf(std::string path) {
    const auto cut = [&path] { path.erase(std::min(path.rfind('\\'), path.size())); };
    cut();
    const std::string_view last = std::string_view(path).substr(path.rfind('\\') + 1);
    for (const char* name : kDiskFolderNames) {
        if (!base::EqualsFolded(last, name)) continue;
        cut();
        break;
    }
    return path.empty() || path.ends_with(':') ? path + "\\" : path;
}

}  // namespace

BEGIN_MESSAGE_MAP(CopyDialog, CDialog)
ON_BN_CLICKED(kCopySourceBrowse, &CopyDialog::OnBrowseSource)
ON_BN_CLICKED(kCopyTargetBrowse, &CopyDialog::OnBrowseTarget)
ON_BN_CLICKED(kCopyShowButton, &CopyDialog::OnShowFiles)
ON_EN_CHANGE(kCopySourceEdit, &CopyDialog::OnSourceChanged)
END_MESSAGE_MAP()

CopyDialog::CopyDialog() : CDialog(kCopyDialog) {}

HINSTANCE CopyDialog::Resources() noexcept {
    return &kInstance;
}

BOOL CopyDialog::OnInitDialog() {
    CDialog::OnInitDialog();
    GetDlgItem(kCopySkipRadio)->SendMessage(BM_SETCHECK, BST_CHECKED);
    for (const int edit : {kCopySourceEdit, kCopyTargetEdit}) GetDlgItem(edit)->SendMessage(EM_LIMITTEXT, MAX_PATH - 1);
    return TRUE;
}

void CopyDialog::OnOK() {
    if (m_running) return;
    m_running = true;
    m_stop = false;
    EnableControls(false);
    try {
        const CWaitCursor wait;
        Copy();
    } catch (const std::exception& refusal) {
        MessageBox(refusal.what(), kCaption, MB_ICONEXCLAMATION);
    }
    EnableControls(true);
    m_running = false;
}

void CopyDialog::OnCancel() {
    if (m_running) {
        m_stop = true;
    } else {
        CDialog::OnCancel();
    }
}

void CopyDialog::OnBrowseSource() {
    Browse(kCopySourceEdit, "Zelmara! Disk", true);
}

void CopyDialog::OnBrowseTarget() {
    Browse(kCopyTargetEdit, "Target Directory", false);
}

void CopyDialog::OnShowFiles() {
    try {
        const CWaitCursor wait;
        Show(PlanCopy(Text(kCopySourceEdit)));
    } catch (const CopyRefused& refusal) {
        MessageBox(refusal.what(), kCaption, MB_ICONEXCLAMATION);
    }
}

/// The list no longer shows the files that would be copied.
void CopyDialog::OnSourceChanged() {
    GetDlgItem(kCopyFileList)->SendMessage(LB_RESETCONTENT);
    SetDlgItemText(kCopyStatus, "");
}

std::string CopyDialog::Text(int id) const {
    CString text;
    GetDlgItemText(id, text);
    return text.GetString();
}

/// Lets the user choose a folder by any file in it. For a target without files, any name may be typed.
void CopyDialog::Browse(int edit, const char* title, bool for_opening) {
    CFileDialog dialog(for_opening, "*.*", nullptr, OFN_HIDEREADONLY | OFN_EXPLORER, "*.*||", this);
    dialog.m_ofn.lpstrTitle = title;
    const std::string start = Text(edit);
    const DWORD attributes = GetFileAttributesA(start.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        dialog.m_ofn.lpstrInitialDir = start.c_str();
    if (dialog.DoModal() != IDOK) return;
    SetDlgItemText(edit, FolderOf(dialog.GetPathName().GetString()).c_str());
    if (edit == kCopySourceEdit) OnShowFiles();
}

void CopyDialog::Show(const CopyPlan& plan) {
    CWnd& list = *GetDlgItem(kCopyFileList);
    list.SendMessage(LB_RESETCONTENT);
    std::size_t unreadable = 0;
    for (const CopyItem& item : plan.items) {
        const bool good = item.error.empty();
        const std::string line =
            item.label + "  (" +
            (good ? item.kind + std::string(", ") + std::to_string(item.size) + " bytes" : item.error) + ")";
        list.SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
        unreadable += good ? 0 : 1;
    }
    std::string status = "Files to copy: " + std::to_string(plan.items.size() - unreadable);
    if (unreadable != 0) status += "; unreadable: " + std::to_string(unreadable);
    if (!plan.passed_over.empty()) status += "; passed over: " + std::to_string(plan.passed_over.size());
    SetDlgItemText(kCopyStatus, status.c_str());
}

void CopyDialog::Copy() {
    const std::string source = Text(kCopySourceEdit);
    const CopyPlan plan = PlanCopy(source);
    Show(plan);
    if (plan.items.empty()) throw CopyRefused("There are no messages and fonts in " + source + ".");
    CopyRequest request;
    request.target = Text(kCopyTargetEdit);
    request.overwrite = GetDlgItem(kCopyOverwriteRadio)->SendMessage(BM_GETCHECK) == static_cast<LRESULT>(BST_CHECKED);
    request.begin = [&](std::size_t item) {
        const std::string status = "Copying " + std::to_string(item + 1) + " of " + std::to_string(plan.items.size()) +
                                   ": " + plan.items[item].label;
        SetDlgItemText(kCopyStatus, status.c_str());
    };
    request.stop = [this] { return Stopped(); };
    GetAsyncKeyState(VK_ESCAPE);  // discards an earlier press
    const CopyOutcome outcome = RunCopy(plan, request);
    const std::string summary = CopySummary(outcome);
    SetDlgItemText(kCopyStatus, summary.c_str());
    const std::string log = WriteCopyLog(plan, outcome, source, request);
    if (log.empty()) throw CopyRefused(summary + ".\nThe log can't be written: " + ErrorMessage(errno));
    m_log = log;
}

bool CopyDialog::Stopped() {
    const bool escape = GetAsyncKeyState(VK_ESCAPE) != 0;  // the call may process a press of Stop
    return escape || m_stop;
}

void CopyDialog::EnableControls(bool on) {
    for (const int id : {kCopySourceEdit, kCopySourceBrowse, kCopyTargetEdit, kCopyTargetBrowse, kCopySkipRadio,
                         kCopyOverwriteRadio, kCopyShowButton, static_cast<int>(IDOK)})
        GetDlgItem(id)->EnableWindow(on);
    SetDlgItemText(IDCANCEL, on ? "Close" : "Stop");
}

}  // namespace zel::diskcopy
