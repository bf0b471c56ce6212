#include "diskcopy/copy_dlg.h"
#include "module/contract/zel_trans_dlg.h"
#include "module/contract/zel_trans_ftp.h"
#include "module/state/module_state.h"
#include "module/tools/open_copy_log.h"
#include "module/tools/zel_trans_batch.h"

using namespace zel;

// The buttons of the import dialog that open another dialog.

void CZelTransDlg::OnButtonZeltransBatch() {
    tools::CZelTransBatch batch(nullptr);
    batch.m_pTransDlg = this;
    batch.DoModal();
    m_bImportSkip = IgnoreZelFontErrors() ? 1 : 0;
    UpdateData(FALSE);
}

void CZelTransDlg::OnButtonZeltransCopyFiles() {
    CCopyDlg copy(nullptr);
    copy.OpenDialog(&tools::OpenCopyLog);
}

void CZelTransDlg::OnButtonZeltransFTP() {
    CZelTransFTP ftp(nullptr);
    ftp.m_pTransDlg = this;
    ftp.DoModal();
    m_bImportSkip = IgnoreZelFontErrors() ? 1 : 0;
    UpdateData(FALSE);
}
