#pragma once

#include "platform/framework/cstring.h"
#include "platform/system/types.h"

class CWnd;
class CZelTransDlg;

/// The run over a range of numbered messages. This version carries its members, which the callers set, and no dialog:
/// DoModal tells the user so and runs nothing.
class CZelTransBatch {
  public:
    explicit CZelTransBatch(CWnd* parent);

    CZelTransDlg* m_pTransDlg = nullptr;  ///< the main dialog; set right after construction.
    BOOL m_bExport = 0;                   ///< non-zero: export mode.
    CString m_strExportPath;              ///< the host's, to be handed back with each export message.

    /// @return IDCANCEL.
    INT_PTR DoModal();
};
