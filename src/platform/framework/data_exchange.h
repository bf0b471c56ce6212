#pragma once

#include "platform/api.h"
#include "platform/framework/cstring.h"
#include "platform/framework/cwnd.h"

/// The direction and the dialog of one call of UpdateData.
class CDataExchange {
  public:
    CDataExchange(CWnd* dialog, BOOL saveAndValidate) noexcept
        : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dialog) {}

    /// TRUE: from the controls to the members.
    BOOL m_bSaveAndValidate;
    CWnd* m_pDlgWnd;
};

/// Exchanges a control's text with a member. A control that already shows the text is not written. A missing control is
/// ignored.
ZEL_PLATFORM_API void DDX_Text(CDataExchange* exchange, int id, CString& value);

/// Exchanges the state of a check box or radio button with a member: 0 or 1; any other value counts as 1.
ZEL_PLATFORM_API void DDX_Check(CDataExchange* exchange, int id, int& value);
