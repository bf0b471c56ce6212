#pragma once

#include "programs/desktop/dialogs/qt_desktop.h"

namespace zel::desktop {

/// The module's screen during the lifetime of the object. Knows whether the module's batch dialog is open.
class ModuleDesktop : public QtDesktop {
  public:
    explicit ModuleDesktop(QWidget* main_window);
    ~ModuleDesktop() override;
    ModuleDesktop(const ModuleDesktop&) = delete;
    ModuleDesktop& operator=(const ModuleDesktop&) = delete;

    void RunModal(CDialog& dialog) override;
    bool IsBatchOpen() const noexcept { return m_batches != 0; }

  private:
    seam::Desktop* m_previous;
    int m_batches = 0;
};

}  // namespace zel::desktop
