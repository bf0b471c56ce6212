#include "platform/framework/cobject.h"

#include "platform/framework/cwinapp.h"
#include "platform/framework/message_map.h"

using namespace zel;

CObject::~CObject() = default;

void CCmdTarget::BeginWaitCursor() {
    AfxGetApp()->DoWaitCursor(1);
}
void CCmdTarget::EndWaitCursor() {
    AfxGetApp()->DoWaitCursor(-1);
}

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() {
    static const AFX_MSGMAP_ENTRY entries[] = {{0, 0, 0, 0, nullptr}};
    static const AFX_MSGMAP map = {nullptr, entries};
    return &map;
}

const AFX_MSGMAP* CCmdTarget::GetMessageMap() const {
    return GetThisMessageMap();
}

BOOL CCmdTarget::OnCmdMsg(UINT id, int code) {
    const AFX_PMSG handler = framework::FindHandler(GetMessageMap(), WM_COMMAND, static_cast<UINT>(code), id);
    if (handler == nullptr) return FALSE;
    (this->*handler)();
    return TRUE;
}
