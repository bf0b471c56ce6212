#pragma once

#include <cstddef>

#include "platform/framework/cwnd.h"
#include "platform/framework/dialog_template.h"

/// A dialog created from a template of the module whose handle is the current resource handle of AfxGetModuleState().
/// Its controls are windows that answer the control messages, without a screen. Not provided: templates in memory,
/// disabling the parent window, help.
class ZEL_PLATFORM_API CDialog : public CWnd {
  public:
    CDialog() = default;
    /// @param parent  ignored: a dialog is a top window.
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);
    ~CDialog() override;

    using CWnd::Create;
    /// Creates a modeless dialog, hidden unless its template is visible, and runs OnInitDialog.
    /// @return FALSE if there is no such template, or the dialog already has a window.
    BOOL Create(UINT templateId, CWnd* parent = nullptr);

    /// Creates the dialog, has the current desktop run it until EndDialog, and destroys its window, also after an
    /// exception.
    /// @return the result passed to EndDialog, -1 if the dialog could not be created.
    virtual INT_PTR DoModal();

    /// Hides the dialog and sets the result of DoModal.
    void EndDialog(int result);

    /// Whether EndDialog has been called since the window was created.
    bool HasEnded() const noexcept { return m_hasEnded; }
    INT_PTR GetResult() const noexcept { return m_result; }

    UINT GetTemplateId() const noexcept { return m_templateId; }
    /// The template of the window; null without a window.
    const zel::framework::DialogTemplate* GetTemplate() const noexcept {
        return m_hWnd != nullptr ? m_template : nullptr;
    }
    /// The control of the template's control `index`; null for an index beyond the last.
    CWnd* GetControl(std::size_t index) const;
    /// Id of the default button, 0 for none.
    UINT GetDefID() const noexcept { return m_defaultId; }

  protected:
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /// Fills the controls by UpdateData.
    /// @return TRUE to set the focus to the first control that can have it, FALSE to leave it unchanged.
    virtual BOOL OnInitDialog();
    /// Reads the controls by UpdateData and ends the dialog with IDOK.
    virtual void OnOK();
    /// Ends the dialog with IDCANCEL.
    virtual void OnCancel();

    DECLARE_MESSAGE_MAP()

  private:
    bool MakeWindow();
    HWND MakeControls();

    UINT m_templateId = 0;
    const zel::framework::DialogTemplate* m_template = nullptr;
    UINT m_defaultId = 0;
    INT_PTR m_result = -1;
    bool m_hasEnded = false;
};
