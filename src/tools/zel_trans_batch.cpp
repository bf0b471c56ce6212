#include "tools/zel_trans_batch.h"

#include "platform/framework/message_box.h"

CZelTransBatch::CZelTransBatch(CWnd* /*parent*/) {}

INT_PTR CZelTransBatch::DoModal() {
    AfxMessageBox(m_bExport != 0 ? "Batch export isn't part of this version."
                                 : "Batch conversion isn't part of this version.");
    return IDCANCEL;
}
