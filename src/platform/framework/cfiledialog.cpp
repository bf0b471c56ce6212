#include "platform/framework/cfiledialog.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>

#include "platform/seam/desktop.h"
#include "platform/system/files.h"

using namespace zel;

CFileDialog::CFileDialog(BOOL openFileDialog, const char* defExt, const char* fileName, DWORD flags, const char* filter,
                         CWnd* parent)
    : m_bOpenFileDialog(openFileDialog), m_filter(filter) {
    std::snprintf(m_szFileName, sizeof m_szFileName, "%s", fileName != nullptr ? fileName : "");
    m_ofn.hwndOwner = parent != nullptr ? parent->m_hWnd : nullptr;
    m_ofn.lpstrFilter = m_filter;
    m_ofn.lpstrFile = m_szFileName;
    m_ofn.nMaxFile = sizeof m_szFileName;
    m_ofn.Flags = flags;
    m_ofn.lpstrDefExt = defExt;
}

INT_PTR CFileDialog::DoModal() {
    if (m_ofn.lpstrFile == nullptr) {
        m_ofn.lpstrFile = m_szFileName;
        m_ofn.nMaxFile = sizeof m_szFileName;
    }
    std::string chosen;
    if (seam::GetDesktop().RunFileDialog(*this, chosen) != IDOK) return IDCANCEL;
    const std::string path = system::ModulePath(chosen);
    if (path.empty() || path.size() >= m_ofn.nMaxFile) return IDCANCEL;
    std::memcpy(m_ofn.lpstrFile, path.c_str(), path.size() + 1);
    return IDOK;
}

CString CFileDialog::GetPathName() const {
    return m_ofn.lpstrFile;
}

CString CFileDialog::GetFileName() const {
    const CString path = GetPathName();
    return path.Mid(std::max(path.ReverseFind('\\'), path.ReverseFind('/')) + 1);
}

CString CFileDialog::GetFileTitle() const {
    const CString name = GetFileName();
    const int dot = name.ReverseFind('.');
    return dot > 0 ? name.Left(dot) : name;
}
