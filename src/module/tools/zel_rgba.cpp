#include "module/tools/zel_rgba.h"

#include "module/contract/dialog_ids.h"
#include "platform/framework/data_exchange.h"

namespace zel::tools {

CZelRGBA::CZelRGBA(CWnd* parent) : CDialog(kRgbaDialog, parent) {}

BEGIN_MESSAGE_MAP(CZelRGBA, CDialog)
ON_BN_CLICKED(RgbaControl::kObjectRadio, &CZelRGBA::OnRadioObject)
ON_BN_CLICKED(RgbaControl::kBackgroundRadio, &CZelRGBA::OnRadioBackground)
END_MESSAGE_MAP()

void CZelRGBA::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_Check(exchange, RgbaControl::kObjectRadio, m_bInsertObject);
    DDX_Check(exchange, RgbaControl::kBackgroundRadio, m_bInsertBackground);
}

INT_PTR CZelRGBA::DoModal() {
    return CDialog::DoModal();
}

BOOL CZelRGBA::OnInitDialog() {
    CDialog::OnInitDialog();
    if (CWnd* const object = GetDlgItem(RgbaControl::kObjectRadio)) object->SendMessage(BM_SETCHECK, 1);
    return 1;
}

void CZelRGBA::OnOK() {
    CDialog::OnOK();
}

void CZelRGBA::OnCancel() {
    CDialog::OnCancel();
}

// OnOK sets both members from the state of the buttons.
void CZelRGBA::OnRadioObject() {
    m_bInsertObject = m_bInsertObject == 0;
}

void CZelRGBA::OnRadioBackground() {
    m_bInsertBackground = m_bInsertBackground == 0;
}

}  // namespace zel::tools
