#include <cstring>
#include <optional>
#include <string_view>

#include "module/contract/dialog_ids.h"
#include "module/contract/message_id.h"
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

// Opens the file, so that the result is the same as the loader's. A path of more than 259 characters can't be opened.
bool CanOpen(const char* dir, const char* name) {
    CString path;
    path.Format("%s\\%s", dir, name);
    CFile file;
    return file.Open(path, CFile::modeRead | CFile::shareDenyNone) != FALSE;
}

/// Shows a message box for a directory that can't be used; its text depends on the system's last error.
void ReportDirectory(CZelTransDlg& dialog, const char* text, const char* caption, const CString& directory) {
    if (GetLastError() >= ERROR_NOT_DOS_DISK) {
        MessageBoxA(dialog.m_hWnd,
                    "Use 'Copy Zelmara! files' to copy messages from Zelmara! formatted media to \n Windows formatted "
                    "media before "
                    "attempting to import Zelmara! messages",
                    "Illegal Media Detected", kExclamation);
        return;
    }
    CString box;
    box.Format(text, static_cast<const char*>(directory));
    MessageBoxA(dialog.m_hWnd, box, caption, kExclamation);
}

/// Reads one directory box and moves its text to the top of its list.
/// @return false if there is no such directory, after a message box.
bool ReadDirectory(CZelTransDlg& dialog, int combo_box, const char* text, const char* caption, CString& directory) {
    dialog.GetDlgItemText(combo_box, directory);
    if (GetFileAttributesA(directory) == INVALID_FILE_ATTRIBUTES) {
        ReportDirectory(dialog, text, caption, directory);
        return false;
    }
    dialog::BringToTop(dialog, combo_box, directory);
    return true;
}

CString MissingMessageText(const CZelTransDlg& dialog, const CString& message_dir, const CString& id) {
    CString text;
    text.Format("Couldn't open Zelmara! Message File: %s\\%s", static_cast<const char*>(message_dir),
                static_cast<const char*>(dialog.m_bNumericName ? dialog.m_sNumericName : id));
    return text;
}

/// Reads the id and converts it to the name of a file in the directory; a changed id is shown.
/// @return false if there is no such file.
bool ReadMessageId(CZelTransDlg& dialog, const CString& message_dir, CString& id) {
    dialog.GetDlgItemText(ImportControl::kMessageIdEdit, id);
    if (!dialog.CheckFileExist(id, message_dir)) return false;
    if (dialog.m_bNumericName) {
        id = dialog.m_sNumericName;
    } else if (id[0] == '.' && !CanOpen(message_dir, id)) {
        // CheckFileExist ignores a leading dot and found a file without one, but the loader opens the id as it is.
        id = id.Mid(1);
    } else {
        return true;
    }
    dialog.SetDlgItemText(ImportControl::kMessageIdEdit, id);
    return true;
}

/// An id that is a number, with or without ".TN".
struct NumericId {
    int number;
    /// Name of its file in the usual form, such as ".0012" or ".0012.TN".
    CString file_name;
};

/// @param id  without a leading dot.
std::optional<NumericId> ParseNumericId(const char* id) {
    const bool has_suffix = std::strstr(id, ".TN") != nullptr;
    // Compared with the number of leading digits: only a ".TN" at the end leaves a number.
    const std::size_t length = std::strlen(id) - (has_suffix ? 3 : 0);
    if (CountDigits(id) != length) return std::nullopt;
    NumericId numeric{MessageNumberOf(id), {}};
    numeric.file_name.Format(length < 5 ? ".%04d" : ".%08d", numeric.number);
    if (has_suffix) numeric.file_name += ".TN";
    return numeric;
}

}  // namespace

void CZelTransDlg::ReadDirectoryPaths() {
    const CWaitCursor wait;
    CString font_dir, message_dir, id;
    if (!ReadDirectory(*this, ImportControl::kFontDirBox, "Invalid Font Directory: %s", "Invalid Directory",
                       font_dir)) {
        m_iStatus = ImportStatus::kBadFontDirectory;
    } else if (!ReadDirectory(*this, ImportControl::kMessageDirBox, "Invalid Message Path: %s", "Invalid Path",
                              message_dir)) {
        m_iStatus = ImportStatus::kBadMessageDirectory;
    } else if (!ReadMessageId(*this, message_dir, id)) {
        if (!IgnoreZelFontErrors()) {
            CString text = MissingMessageText(*this, message_dir, id);
            ReportError(text);
        }
        if (CWnd* const edit = GetDlgItem(ImportControl::kMessageIdEdit)) edit->SendMessage(EM_SETSEL, 0, -1);
        m_iStatus = ImportStatus::kMessageNotFound;
    } else {
        m_sFontDir = font_dir;
        m_sMessageDir = message_dir;
        m_sMessageID = id;
    }
}

bool CZelTransDlg::CheckFileExist(const char* name, const char* dir) {
    const char* const bare = name[0] == '.' ? name + 1 : name;
    m_bNumericName = false;
    if (CanOpen(dir, bare)) {
        m_sNumericName.Empty();
        return true;
    }
    const std::optional<NumericId> numeric = ParseNumericId(bare);
    if (!numeric) return false;
    m_bNumericName = true;
    m_sNumericName = numeric->file_name;
    if (CanOpen(dir, m_sNumericName)) return true;
    CString four_digits;
    four_digits.Format("%04d", numeric->number);
    if (!CanOpen(dir, four_digits)) return false;
    m_sNumericName = four_digits;
    return true;
}

void CZelTransDlg::IncrementFileName(const char* name) {
    const std::string_view bare = WithoutLeadingDot(name);
    if (bare.size() < 5 && CountDigits(bare) == bare.size()) {
        const int next = MessageNumberOf(bare) + 1;
        m_sMessageID.Format(".%04d", next > kLargestMessageNumber ? 0 : next);
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
