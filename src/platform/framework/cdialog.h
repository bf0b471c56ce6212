#pragma once

#include <cstddef>

#include "platform/framework/cwnd.h"
#include "platform/framework/dialog_template.h"

/// A dialog made from a template of the module whose handle is the current resource handle of AfxGetModuleState(). Its
/// controls are windows of their own, which answer the control messages; no screen is needed for that. Left out:
/// templates in memory, the disabling of the parent window, help.
class ZEL_PLATFORM_API CDialog : public CWnd {
  public:
    CDialog() = default;
    /// @param parent  of no account: a dialog is a top window.
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);
    ~CDialog() override;

    using CWnd::Create;
    /// Makes a modeless dialog, hidden unless its template is visible, and runs OnInitDialog.
    /// @return FALSE when there is no such template, or the dialog has a window already.
    BOOL Create(UINT templateId, CWnd* parent = nullptr);

    /// Makes the dialog, hands it to the current desktop until EndDialog, and destroys its window, also when an
    /// exception passes.
    /// @return the result given to EndDialog, -1 when the dialog could not be made.
    virtual INT_PTR DoModal();

    /// Hides the dialog and sets what DoModal returns.
    void EndDialog(int result);

    /// Whether EndDialog has been called since the window was made.
    bool HasEnded() const noexcept { return m_hasEnded; }
    INT_PTR GetResult() const noexcept { return m_result; }

    UINT GetTemplateId() const noexcept { return m_templateId; }
    /// The template of the window; null while there is none.
    const zel::framework::DialogTemplate* GetTemplate() const noexcept {
        return m_hWnd != nullptr ? m_template : nullptr;
    }
    /// The control made from the template's control `index`; null beyond the last.
    CWnd* GetControl(std::size_t index) const;
    /// Id of the default button, 0 for none.
    UINT GetDefID() const noexcept { return m_defaultId; }

  protected:
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// Fills the controls by UpdateData. @return TRUE lets the focus go to the first control, FALSE leaves it where it
    /// was set.
    virtual BOOL OnInitDialog();
    /// Takes the data of the controls by UpdateData and ends the dialog with IDOK.
    virtual void OnOK();
    /// Ends the dialog with IDCANCEL.
    virtual void OnCancel();

    DECLARE_MESSAGE_MAP()

  private:
    bool MakeWindow();

    UINT m_templateId = 0;
    const zel::framework::DialogTemplate* m_template = nullptr;
    UINT m_defaultId = 0;
    INT_PTR m_result = -1;
    bool m_hasEnded = false;
};
