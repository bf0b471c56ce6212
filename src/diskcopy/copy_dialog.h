#pragma once

#include <string>

#include "diskcopy/copy_run.h"
#include "platform/framework/cdialog.h"

namespace zel::diskcopy {

/// The dialog of CCopyDlg. Its template is found only while Resources() is the current resource handle.
class CopyDialog : public CDialog {
  public:
    CopyDialog();

    /// The template's module instance.
    static HINSTANCE Resources() noexcept;

    /// Log of the last run, in the module's form; empty before the first.
    const std::string& LogPath() const noexcept { return m_log; }

  protected:
    BOOL OnInitDialog() override;
    /// Copies; the dialog stays open.
    void OnOK() override;
    /// Closes the dialog, or stops a run.
    void OnCancel() override;

    afx_msg void OnBrowseSource();
    afx_msg void OnBrowseTarget();
    afx_msg void OnShowFiles();
    afx_msg void OnSourceChanged();

    DECLARE_MESSAGE_MAP()

  private:
    std::string Text(int id) const;
    void Browse(int edit, const char* title, bool for_opening);
    void Show(const CopyPlan& plan);
    void Copy();
    bool Stopped();
    void EnableControls(bool on);

    std::string m_log;
    bool m_running = false;
    bool m_stop = false;
};

}  // namespace zel::diskcopy
