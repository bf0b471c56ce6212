#include <cstring>
#include <string_view>

#include "module/contract/message_id.h"
#include "module/contract/dialog_ids.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/dialog/browse.h"
#include "module/state/module_state.h"
#include "platform/framework/cfile.h"
#include "platform/framework/message_box.h"
#include "platform/framework/wait_cursor.h"
#include "platform/system/errors.h"
#include "platform/system/files.h"

using namespace zel;

namespace {

constexpr UINT kExclamation = MB_OK | MB_ICONEXCLAMATION;

// Checked on opening, so that the answer is the one that the loader will get. A path of more than 259 characters
// doesn't open.
bool FileOpens(const char* dir, const char* name) {
    CString path;
    path.Format("%s\\%s", dir, name);
    CFile file;
    return file.Open(path, CFile::modeRead | CFile::shareDenyNone) != FALSE;
}

}  // namespace

/// Reads one directory box, tells the user when there is no such directory, and brings the text to the top of the box's
/// list.
bool CZelTransDlg::TakeDirectory(int combo_box, const char* invalid_text, const char* invalid_caption,
                                 CString& directory) {
    GetDlgItemText(combo_box, directory);
    if (GetFileAttributesA(directory) != INVALID_FILE_ATTRIBUTES) {
        dialog::BringToTop(*this, combo_box, directory);
        return true;
    }
    if (GetLastError() >= ERROR_NOT_DOS_DISK) {
        MessageBoxA(m_hWnd,
                    "Use 'Copy Zelmara! files' to copy messages from Zelmara! formatted media to \n Windows formatted "
                    "media before "
                    "attempting to import Zelmara! messages",
                    "Illegal Media Detected", kExclamation);
    } else {
        CString text;
        text.Format(invalid_text, static_cast<const char*>(directory));
        MessageBoxA(m_hWnd, text, invalid_caption, kExclamation);
    }
    return false;
}

void CZelTransDlg::ReadDirectoryPaths() {
    const CWaitCursor wait;
    CString font_dir, message_dir, id;
    if (!TakeDirectory(ImportControl::kFontDirBox, "Invalid Font Directory: %s", "Invalid Directory", font_dir)) {
        m_iStatus = ImportStatus::kBadFontDirectory;
        return;
    }
    if (!TakeDirectory(ImportControl::kMessageDirBox, "Invalid Message Path: %s", "Invalid Path", message_dir)) {
        m_iStatus = ImportStatus::kBadMessageDirectory;
        return;
    }
    GetDlgItemText(ImportControl::kMessageIdEdit, id);
    if (!CheckFileExist(id, message_dir)) {
        if (!IgnoreZelFontErrors()) {
            CString text;
            text.Format("Couldn't open Zelmara! Message File: %s\\%s", static_cast<const char*>(message_dir),
                        static_cast<const char*>(m_bNumericName ? m_sNumericName : id));
            ReportError(text);
        }
        if (CWnd* const edit = GetDlgItem(ImportControl::kMessageIdEdit)) edit->SendMessage(EM_SETSEL, 0, -1);
        m_iStatus = ImportStatus::kMessageNotFound;
        return;
    }
    if (m_bNumericName) {
        SetDlgItemText(ImportControl::kMessageIdEdit, m_sNumericName);
        id = m_sNumericName;
    } else if (id[0] == '.' && !FileOpens(message_dir, id)) {
        // The check looked behind the dot and found a file without one; the loader opens the name that the id spells.
        id = id.Mid(1);
        SetDlgItemText(ImportControl::kMessageIdEdit, id);
    }
    m_sFontDir = font_dir;
    m_sMessageDir = message_dir;
    m_sMessageID = id;
}

bool CZelTransDlg::CheckFileExist(const char* name, const char* dir) {
    m_bNumericName = false;
    const bool has_dot = name[0] == '.';
    const char* const bare = has_dot ? name + 1 : name;
    const bool has_suffix = std::strstr(bare, ".TN") != nullptr;
    // Held against the digits in front: only a ".TN" that ends the name leaves a number.
    const std::size_t length = std::strlen(bare) - (has_suffix ? 3 : 0);
    int number = 0;
    if (CountDigits(bare) == length) {
        m_bNumericName = true;
        number = MessageNumberOf(bare);
        m_sNumericName.Format(length < 5 ? ".%04d" : ".%08d", number);
        if (has_suffix) m_sNumericName += ".TN";
    }
    if (FileOpens(dir, bare)) {
        m_bNumericName = false;
        m_sNumericName.Empty();
        return true;
    }
    if (!m_bNumericName) return false;
    if (FileOpens(dir, m_sNumericName)) return true;
    CString four_digits;
    four_digits.Format("%04d", number);
    if (!FileOpens(dir, four_digits)) return false;
    m_sNumericName = four_digits;
    return true;
}

void CZelTransDlg::IncrementFileName(const char* name) {
    const std::string_view bare = WithoutLeadingDot(name);
    if (bare.size() < 5 && CountDigits(bare) == bare.size()) {
        const int next = MessageNumberOf(bare) + 1;
        m_sMessageID.Format(".%04d", next > kLargestNumber ? 0 : next);
    }
    M_sNextMessage = m_sMessageID;
}

int CZelTransDlg::ReportError(CString& text) {
    const DWORD error = GetLastError();
    char* system_text = nullptr;
    constexpr DWORD kUserLanguage = 0x400;
    if (error != ERROR_SUCCESS) {
        FormatMessageA(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM, nullptr, error, kUserLanguage,
                       reinterpret_cast<char*>(&system_text), 0, nullptr);
    }
    if (system_text != nullptr) {
        CString both;
        both.Format("%s\n           %s", static_cast<const char*>(text), system_text);
        MessageBoxA(m_hWnd, both, "Zelmara! Import Error", kExclamation);
        LocalFree(system_text);
    } else {
        MessageBoxA(m_hWnd, text, "Zelmara! Import Error", MB_OK);
    }
    return static_cast<int>(error);
}
