#pragma once

#include "platform/framework/cwnd.h"

/// The window that a host gives a batch export. The module asks it before each message which way the export begins.
class CZelExportWnd : public CWnd {
  public:
    BOOL m_bExportFlag =
        0;  ///< non-zero: with kMsgExportFlagged to the host's window, else with kMsgExportPlain to this.
};
