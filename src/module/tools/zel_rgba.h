#pragma once

#include "platform/framework/cdialog.h"

namespace zel::tools {

/// The dialog in which the user chooses how to insert the picture of an RGBA file. The result of DoModal is IDOK or
/// IDCANCEL.
class CZelRGBA : public CDialog {
  public:
    explicit CZelRGBA(CWnd* parent);

    BOOL m_bInsertObject = 1;
    BOOL m_bInsertBackground = 0;

    INT_PTR DoModal() override;

  protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;
    void OnCancel() override;
    afx_msg void OnRadioObject();
    afx_msg void OnRadioBackground();

    DECLARE_MESSAGE_MAP()
};

}  // namespace zel::tools
