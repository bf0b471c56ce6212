#include "platform/framework/data_exchange.h"

void DDX_Text(CDataExchange* exchange, int id, CString& value) {
    CWnd* const control = exchange->m_pDlgWnd->GetDlgItem(id);
    if (control == nullptr) return;
    CString shown;
    control->GetWindowText(shown);
    if (exchange->m_bSaveAndValidate) {
        value = shown;
    } else if (shown != value) {
        control->SetWindowText(value);
    }
}

void DDX_Check(CDataExchange* exchange, int id, int& value) {
    CWnd* const control = exchange->m_pDlgWnd->GetDlgItem(id);
    if (control == nullptr) return;
    if (exchange->m_bSaveAndValidate) {
        value = static_cast<int>(control->SendMessage(BM_GETCHECK));
    } else {
        control->SendMessage(BM_SETCHECK, value != 0 ? BST_CHECKED : BST_UNCHECKED);
    }
}
