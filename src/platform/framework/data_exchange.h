#pragma once

#include "platform/api.h"
#include "platform/framework/cstring.h"
#include "platform/framework/cwnd.h"

/// One run of UpdateData.
class CDataExchange {
  public:
    CDataExchange(CWnd* dialog, BOOL saveAndValidate) noexcept
        : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dialog) {}

    BOOL m_bSaveAndValidate;  // TRUE: from the controls to the members
    CWnd* m_pDlgWnd;
};

/// Binds a control's text to a member. A text that is there already isn't written again; a missing control is passed
/// over.
ZEL_PLATFORM_API void DDX_Text(CDataExchange* exchange, int id, CString& value);

/// Binds the state of a check box or radio button to a member, 0 or 1; any other value counts as 1.
ZEL_PLATFORM_API void DDX_Check(CDataExchange* exchange, int id, int& value);
