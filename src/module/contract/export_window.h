#pragma once

#include "platform/framework/cwnd.h"

/// The window that a host passes to CZelTransExport::ZelBatchExport. It receives kMsgExportPlain and kMsgExportFinish.
class CZelExportWnd : public CWnd {
  public:
    /// How an export begins: non-zero, by kMsgExportFlagged to the host window of the call; 0, by kMsgExportPlain to
    /// this window. Read before each message, so the host may change it during the export.
    BOOL m_bExportFlag = 0;
};
