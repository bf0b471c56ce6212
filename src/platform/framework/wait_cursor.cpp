#include "platform/framework/wait_cursor.h"

#include "platform/framework/cwinapp.h"

CWaitCursor::CWaitCursor() {
    AfxGetApp()->DoWaitCursor(1);
}
CWaitCursor::~CWaitCursor() {
    AfxGetApp()->DoWaitCursor(-1);
}
